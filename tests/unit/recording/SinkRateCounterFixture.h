#pragma once

#include "recording/SinkRateCounter.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/recording/RateFixture.h"

#include <atomic>

namespace test {

/// A real rate sink with its worker, fed by a pin of the test.
class RateSink {
public:
  /// `parameters`: the elements of the block's "parameters" list.
  explicit RateSink(const QByteArray& parameters = {}, const QByteArray& name = "rates")
      : block(nullptr, Context(),
              Object(R"({"name":")" + name + R"(","data_type":"rate_counters","parameters":[)" + parameters +
                     "]}")) {
    block.Inputs().front()->Connect(&feed);
  }

  QString Ask(QString query) {
    QString answer;
    block.InterpretMessage(&query, &answer);
    return answer;
  }
  QString Data() { return Ask(R"({"args":[{"cmd":"get_data","source":"data"}]})"); }
  QString Immediate() { return Ask(R"({"args":[{"cmd":"get_data","source":"immediate"}]})"); }
  int HistorySize() { return Object(Data().toUtf8())["data"].toArray().size(); }
  QString Counts() { return Ask(R"({"args":[{"cmd":"get_dump_counts"}]})"); }

  /// Feeds one message and waits until the worker has consumed it and everything before it.
  [[nodiscard]] bool Consume(DataMessage message) {
    DataMessage last = MessageOf(Watched([this] { ++ended_; }));
    const int before = ended_;
    return feed.Push(std::move(message)) && feed.Push(std::move(last)) && WaitFor([&] {
             block.NewDataInTheInputPin(0);  // a wake-up may be lost
             return ended_ > before;
           });
  }
  [[nodiscard]] bool Consume(RatesRecord record) { return Consume(MessageOf(std::move(record))); }

  static ChainContext Context() {
    ChainContext context;
    context.fullPath = "processing/0/filter_chain/main/chain/rates";
    return context;
  }

private:
  std::atomic<int> ended_ = 0;  // outlives the block, whose worker counts

public:
  PinOutput feed{"rate_counters"};
  SinkRateCounter block;
};

}  // namespace test
