#pragma once

#include "sinks/Histogram.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>

namespace test {

inline ChainContext SpectrumContext() {
  ChainContext context;
  context.fullPath = "processing/0/filter_chain/main/chain/spectrum";
  return context;
}

/// A real spectrum with its worker, fed by a pin of the test.
class Spectrum {
public:
  /// `parameters`: the elements of the block's "parameters" list.
  explicit Spectrum(const QByteArray& parameters)
      : block(nullptr, SpectrumContext(),
              Object(R"({"name":"spectrum","data_type":"energy","parameters":[)" + parameters + "]}")) {
    block.Inputs().front()->Connect(&feed);
  }

  /// Four channels unless the test needs others; counting.
  static QByteArray Size(int bins, int channels = 4) {
    return R"({"param_name":"bin_number","param_value":)" + QByteArray::number(bins) +
           R"(},{"param_name":"ch_number","param_value":)" + QByteArray::number(channels) + "}";
  }

  QString Ask(QString query) {
    QString answer;
    block.InterpretMessage(&query, &answer);
    return answer;
  }
  void Run() { Ask(R"({"args":[{"cmd":"run_control","status":"freerun"}]})"); }
  QString Channel(int channel) {
    return Ask(QStringLiteral(R"({"args":[{"cmd":"get_data","channels":[%1]}]})").arg(channel));
  }
  /// One channel's counts.
  std::vector<int> Counts(int channel) {
    std::vector<int> counts;
    const QJsonArray bins = Array(Channel(channel).toUtf8())[0].toObject()["data"].toArray();
    for (const QJsonValue& bin : bins) {
      counts.push_back(bin.toInt());
    }
    return counts;
  }

  /// Parameter entries reach the live block.
  bool Apply(const QByteArray& parameters) {
    return block.ParseParameters(Object(R"({"parameters":[)" + parameters + "]}"));
  }

  /// Feeds one message and waits until the worker has consumed it and everything before it.
  template <typename... Records>
  [[nodiscard]] bool Consume(Records... records) {
    std::atomic<bool> destroyed = false;
    if (!feed.Push(MessageOf(std::move(records)..., Watched([&destroyed] { destroyed = true; })))) {
      return false;
    }
    return WaitFor([&] {
      block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return destroyed.load();
    });
  }

  PinOutput feed{"energy"};
  Histogram block;
};

}  // namespace test
