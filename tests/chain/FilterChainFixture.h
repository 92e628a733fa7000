#pragma once

#include "processing/Process_Tee.h"
#include "processing/Process_Time_Sorting.h"
#include "tests/chain/ChainFixture.h"

/// What chains with tees and a sorter are built of.
class FilterChainFixture : public ChainFixture {
protected:
  /// Each reading is 6 ms later than the one before, so that events leave a sorter with the next message.
  class SteppingClock final : public korvax::Clock {
  public:
    qint64 SteadyMs() const override { return 0; }
    qint64 SecondsSinceEpoch() const override { return 0; }
    qint64 NanosecondsSinceEpoch() const override { return now_ += 6'000'000; }

  private:
    mutable std::atomic<qint64> now_ = 1'700'000'000'000'000'000;
  };

  std::unique_ptr<Process_Tee> MakeTee(int outputs) const {
    return std::make_unique<Process_Tee>(
        nullptr, Context("tee"), QJsonObject{{"name", "tee"}, {"data_type", "energy"}, {"output_count", outputs}});
  }
  std::unique_ptr<Process_Time_Sorting> MakeSorter() const {
    return std::make_unique<Process_Time_Sorting>(nullptr, Context("sorter"),
                                                  QJsonObject{{"name", "sorter"}, {"data_type", "energy"}}, clock);
  }
  template <typename Sink>
  std::unique_ptr<Sink> Make(const QJsonArray& parameters) const {
    return std::make_unique<Sink>(
        nullptr, Context("sink"),
        QJsonObject{{"name", "sink"}, {"data_type", "energy"}, {"parameters", parameters}});
  }

  static void LinkOutput(const KorvaxBlock& upstream, std::size_t output, const KorvaxBlock& downstream) {
    downstream.Inputs().at(0)->Connect(upstream.Outputs().at(output).get());
  }

  template <typename Sink>
  static QString AskSink(Sink& sink, const char* args) {
    QString query = QStringLiteral(R"({"args":[%1]})").arg(QLatin1String(args));
    QString answer;
    sink.InterpretMessage(&query, &answer);
    return answer;
  }
  template <typename Sink>
  static void RunSink(Sink& sink) {
    EXPECT_EQ(AskSink(sink, R"({"cmd":"run_control","status":"freerun"})"), "[{\"response\": true}]");
  }

  const SteppingClock clock{};
};
