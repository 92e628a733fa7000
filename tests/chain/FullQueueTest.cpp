#include "tests/chain/ChainFixture.h"

#include <QSignalSpy>

namespace {

using AFullQueue = ChainFixture;

// Signals reach a sink through the event loop, so a main thread that is busy stalls every sink.
TEST_F(AFullQueue, dropsTheNewestMessagesAndCountsEachOfTheOthersOnce) {
  const auto source = MakeSource();
  const auto spectrum = MakeSpectrum(12'001, 1);
  Link(*source, *spectrum);
  Run(*spectrum);
  for (quint32 energy = 0; energy < 12'000; ++energy) {
    digitizer.Offer(test::OneEvent(0, energy));
  }
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  EXPECT_EQ(Total(*spectrum, 1), 0);

  ASSERT_TRUE(WaitForTotal(*spectrum, 1, 10'000));
  digitizer.Offer(test::OneEvent(0, 12'000));  // there is room again
  ASSERT_TRUE(WaitForTotal(*spectrum, 1, 10'001));
  source->StopWorker();
  spectrum->StopWorker();
  const std::vector<int> counts = Counts(*spectrum, 0);
  for (std::size_t energy = 0; energy < 12'001; ++energy) {
    ASSERT_EQ(counts[energy], energy < 10'000 || energy == 12'000 ? 1 : 0) << energy;
  }
}

TEST_F(AFullQueue, handsTheBlocksOfDroppedMessagesBackAndLogsNothing) {
  const auto source = MakeSource();
  const auto spectrum = MakeSpectrum(4, 1);
  Link(*source, *spectrum);
  const QSignalSpy signalled(spectrum->Inputs()[0].get(), &PinInput::DataReady);
  for (int i = 0; i < 10'100; ++i) {
    digitizer.Offer(test::OneEvent(0, 1));
  }
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  EXPECT_EQ(digitizer.vendor.CallsOf("free").size(), 10'100);
  test::DeliverEvents();
  ASSERT_EQ(signalled.count(), 10'000);
  EXPECT_EQ(signalled.first().at(0).toInt(), 1);
  EXPECT_EQ(signalled.last().at(0).toInt(), 10'000);
}

TEST_F(AFullQueue, oneWakeUpDrainsItWhole) {
  const auto source = MakeSource();
  const auto spectrum = MakeSpectrum(4, 1);
  Link(*source, *spectrum);
  Run(*spectrum);
  for (int i = 0; i < 10'000; ++i) {
    digitizer.Offer(test::OneEvent(0, 1));
  }
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  while (Total(*spectrum, 1) == 0) {  // until one wake-up has found the worker waiting
    spectrum->NewDataInTheInputPin(1);
  }
  for (int waited = 0; waited < 60'000 && Total(*spectrum, 1) < 10'000; ++waited) {
    QThread::msleep(1);
  }
  EXPECT_EQ(Total(*spectrum, 1), 10'000);
}

}  // namespace
