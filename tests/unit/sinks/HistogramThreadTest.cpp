#include "sinks/Histogram_Thread.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

// A worker of two channels and eight bins; Count runs it to its end over the events fed before.
class AHistogramThread : public testing::Test {
protected:
  AHistogramThread() {
    inputs.push_back(std::make_unique<PinInput>("energy"));
    inputs.front()->Connect(&feed);
  }

  quint32 Count(quint32 energyRaw, qint32 bin) {
    Histogram_Thread worker(inputs, {.channels = 2, .bins = 8});
    worker.SetRunning(true);
    settings(worker);
    feed.Push(test::MessageOf(test::Energy(1, energyRaw)));
    worker.start(korvax::StreamPriority);
    worker.Stop();
    EXPECT_EQ(worker.Counts().At(0, bin), 0U);
    return worker.Counts().At(1, bin);
  }

  PinOutput feed{"energy"};
  KorvaxBlock::InputPins inputs;
  std::function<void(Histogram_Thread&)> settings = [](Histogram_Thread&) {};
};

TEST_F(AHistogramThread, startsWithGainOneAndCutsThatLetEveryBinPass) {
  EXPECT_EQ(Count(5, 5), 1U);
  EXPECT_EQ(Count(0, 0), 1U);
  EXPECT_EQ(Count(100, 7), 1U);
}

TEST_F(AHistogramThread, startsStopped) {
  const Histogram_Thread worker(inputs, {.channels = 2, .bins = 8});
  EXPECT_FALSE(worker.IsRunning());
}

TEST_F(AHistogramThread, rejectsEveryEventWhenACutIsNotANumber) {
  for (const auto& [min, max] : {std::pair{NaN, 8.0}, std::pair{0.0, NaN}, std::pair{NaN, NaN}}) {
    settings = [cutMin = min, cutMax = max](Histogram_Thread& worker) { worker.SetCuts(cutMin, cutMax); };
    EXPECT_EQ(Count(5, 5), 0U) << min << " to " << max;
  }
}

TEST_F(AHistogramThread, takesInfiniteCuts) {
  settings = [](Histogram_Thread& worker) { worker.SetCuts(-Infinity, Infinity); };
  EXPECT_EQ(Count(5, 5), 1U);
}

TEST_F(AHistogramThread, countsInBin0WhenTheGainIsNotANumber_isKept) {
  settings = [](Histogram_Thread& worker) { worker.SetGain(NaN); };
  EXPECT_EQ(Count(5, 0), 1U);
}

TEST_F(AHistogramThread, countsInBin0WhenZeroTimesInfinityIsNotANumber_isKept) {
  settings = [](Histogram_Thread& worker) { worker.SetGain(Infinity); };
  EXPECT_EQ(Count(0, 0), 1U);
}

}  // namespace
