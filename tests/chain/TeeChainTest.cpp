#include "tests/chain/FilterChainFixture.h"

namespace {

class ATeeInTheChain : public FilterChainFixture {
protected:
  ATeeInTheChain() { Link(*source, *tee); }
  ~ATeeInTheChain() override {
    source->StopWorker();
    for (const auto& output : tee->Outputs()) {
      for (DataMessage message; output->Take(message);) {  // a pin that ends leaves alone what is queued
      }
    }
  }

  void OfferEvents(int count) {
    for (int energy = 0; energy < count; ++energy) {
      digitizer.Offer(test::OneEvent(0, static_cast<quint32>(energy)));
    }
  }

  std::unique_ptr<Source> source = MakeSource();
  std::unique_ptr<Process_Tee> tee = MakeTee(2);
};

TEST_F(ATeeInTheChain, isNotDisturbedByAnOutputThatNobodyReads) {
  constexpr int Events = 12'000;
  const auto spectrum = MakeSpectrum(Events, 1);
  LinkOutput(*tee, 0, *spectrum);
  Run(*spectrum);
  source->Run();
  for (int offered = 0; offered < Events; offered += 1000) {
    for (int energy = offered; energy < offered + 1000; ++energy) {
      digitizer.Offer(test::OneEvent(0, static_cast<quint32>(energy)));
    }
    ASSERT_TRUE(WaitForTotal(*spectrum, 1, offered + 1000));
  }
  EXPECT_EQ(Counts(*spectrum, 0), std::vector<int>(Events, 1));
  EXPECT_EQ(tee->Outputs()[1]->Level(), 10'000);
  EXPECT_EQ(tee->Outputs()[1]->DroppedRecords(), 2'000U);
}

TEST_F(ATeeInTheChain, givesAStalledConsumerTheOldestMessagesOnceItReads) {
  constexpr int Events = 11'000;
  const auto quick = MakeSpectrum(Events, 1);
  const auto stalled = MakeSpectrum(Events, 1);
  LinkOutput(*tee, 0, *quick);
  LinkOutput(*tee, 1, *stalled);
  Run(*quick);
  Run(*stalled);
  stalled->Inputs()[0]->blockSignals(true);
  source->Run();
  for (int offered = 0; offered < Events; offered += 1000) {
    for (int energy = offered; energy < offered + 1000; ++energy) {
      digitizer.Offer(test::OneEvent(0, static_cast<quint32>(energy)));
    }
    ASSERT_TRUE(WaitForTotal(*quick, 1, offered + 1000));
  }
  EXPECT_EQ(Total(*stalled, 1), 0);
  ASSERT_TRUE(WaitForTotal(*stalled, 1, 10'000));
  std::vector<int> expected(Events, 1);
  std::fill(expected.begin() + 10'000, expected.end(), 0);
  EXPECT_EQ(Counts(*stalled, 0), expected);
}

TEST_F(ATeeInTheChain, stoppedInTheOrderOfTheChainLosesNothing) {
  const auto spectrum = MakeSpectrum(2'000, 1);
  LinkOutput(*tee, 1, *spectrum);
  Run(*spectrum);
  OfferEvents(2'000);
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  tee->StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Counts(*spectrum, 0), std::vector<int>(2'000, 1));
}

TEST_F(ATeeInTheChain, withoutOutputsEmptiesItsInput) {
  const auto end = MakeTee(0);
  Link(*tee, *end);
  OfferEvents(500);
  source->Run();
  EXPECT_TRUE(test::WaitFor([&] {
    return digitizer.IsExhausted() && tee->Outputs()[0]->AcceptedMessages() == 500 &&
           tee->Outputs()[0]->Level() == 0;
  }));
}

}  // namespace
