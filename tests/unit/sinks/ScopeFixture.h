#pragma once

#include "sinks/Oscilloscope.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/sinks/WaveFixture.h"

#include <atomic>

namespace test {

/// A real oscilloscope with its worker, fed by a pin of the test.
class Scope {
public:
  /// `parameters`: the elements of the block's "parameters" list.
  explicit Scope(const QByteArray& parameters)
      : block(nullptr, Context(),
              Object(R"({"name":"scope","data_type":"waveform","parameters":[)" + parameters + "]}")) {
    block.Inputs().front()->Connect(&feed);
  }

  static QByteArray Parameter(const QByteArray& name, const QByteArray& value) {
    return R"({"param_name":")" + name + R"(","param_value":)" + value + "}";
  }
  static QByteArray Shape(int samples, int channels, int analog, int digital) {
    return Parameter("sample_number", QByteArray::number(samples)) + "," +
           Parameter("ch_number", QByteArray::number(channels)) + "," +
           Parameter("ch_analog", QByteArray::number(analog)) + "," +
           Parameter("ch_digital", QByteArray::number(digital));
  }

  QString Ask(QString query) {
    QString answer;
    block.InterpretMessage(&query, &answer);
    return answer;
  }
  QString Traces() { return Ask(R"({"cmd":"require_data"})"); }
  /// `switches`: the elements of "ch_enable".
  QString Enable(const QString& switches) {
    return Ask(R"({"cmd":"set_channel","ch_enable":[)" + switches + "]}");
  }
  QString Counts() { return Ask(R"({"cmd":"get_dump_counts"})"); }

  /// Feeds one message and waits until the worker has consumed it and everything before it.
  [[nodiscard]] bool Consume(DataMessage message) {
    DataMessage last = MessageOf(Watched([this] { ++ended_; }));
    const int before = ended_;
    return feed.Push(std::move(message)) && feed.Push(std::move(last)) && WaitFor([&] {
             block.NewDataInTheInputPin(0);  // a wake-up may be lost
             return ended_ > before;
           });
  }
  [[nodiscard]] bool Consume(WavesRecord waves) { return Consume(MessageOf(std::move(waves))); }

private:
  static ChainContext Context() {
    ChainContext context;
    context.fullPath = "processing/0/filter_chain/main/chain/scope";
    return context;
  }

  std::atomic<int> ended_ = 0;  // outlives the block, whose worker counts

public:
  PinOutput feed{"waveform"};
  Oscilloscope block;
};

}  // namespace test
