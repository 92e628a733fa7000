#include "tests/chain/ChainFixture.h"

#include <random>

namespace {

class ASourceAndASpectrum : public ChainFixture {
protected:
  static constexpr int Channels = 4;
  static constexpr int Bins = 64;

  ASourceAndASpectrum() { Link(*source, *spectrum); }
  ~ASourceAndASpectrum() override { source->StopWorker(); }

  // Offers events of random channels and energies and notes where each belongs.
  void OfferRandom(int blocks, int eventsPerBlock) {
    for (int b = 0; b < blocks; ++b) {
      test::RawBlock block;
      for (int e = 0; e < eventsPerBlock; ++e) {
        const quint32 channel = random() % Channels;
        const quint32 energy = random() % Bins;
        block.Add(test::EnergyRecord(channel, energy));
        ++expected[channel][energy];
        ++offered;
      }
      digitizer.Offer(std::move(block));
    }
  }

  void ExpectEveryBinAsOffered() {
    for (int channel = 0; channel < Channels; ++channel) {
      EXPECT_EQ(Counts(*spectrum, channel), expected[static_cast<std::size_t>(channel)]) << "channel " << channel;
    }
  }

  std::unique_ptr<Source> source = MakeSource();
  std::unique_ptr<Histogram> spectrum = MakeSpectrum(Bins, Channels);
  std::mt19937 random{20240229};
  std::vector<std::vector<int>> expected{Channels, std::vector<int>(Bins)};
  int offered = 0;
};

TEST_F(ASourceAndASpectrum, countEveryEventOnceInItsChannelAndBin) {
  Run(*spectrum);
  OfferRandom(300, 50);
  source->Run();
  ASSERT_TRUE(WaitForTotal(*spectrum, Channels, offered));
  source->StopWorker();
  spectrum->StopWorker();
  ExpectEveryBinAsOffered();
}

TEST_F(ASourceAndASpectrum, countEventsThatComeWhileTheyRun) {
  Run(*spectrum);
  source->Run();
  for (int round = 0; round < 50; ++round) {
    OfferRandom(3, 7);
    ASSERT_TRUE(WaitForTotal(*spectrum, Channels, offered));
  }
  ExpectEveryBinAsOffered();
}

TEST_F(ASourceAndASpectrum, stoppedInTheOrderOfTheChainLoseNothing) {
  Run(*spectrum);
  OfferRandom(500, 3);
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  spectrum->StopWorker();
  ExpectEveryBinAsOffered();
}

TEST_F(ASourceAndASpectrum, readNothingBeforeTheSourceIsRun) {
  test::DeliverEvents();
  EXPECT_EQ(digitizer.vendor.Calls(), QStringList());
  source->Run();
  EXPECT_TRUE(test::WaitFor([this] { return !digitizer.vendor.CallsOf("read endpoints\\energy").isEmpty(); }));
}

TEST_F(ASourceAndASpectrum, discardWhatComesBeforeRunControl) {
  OfferRandom(20, 5);
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Total(*spectrum, Channels), 0);
  DataMessage message;
  EXPECT_EQ(spectrum->Inputs()[0]->Pop(message), 1);
}

TEST_F(ASourceAndASpectrum, failedAndEmptyReadsNeitherLoseNorRepeatEvents) {
  Run(*spectrum);
  for (int round = 0; round < 20; ++round) {
    OfferRandom(1, 4);
    digitizer.OfferNothing(-1);
    digitizer.OfferNothing(-15);
    digitizer.OfferNothing(0, 0);
    digitizer.OfferNothing(0, -3);
    digitizer.OfferNothing(-2, 5);
  }
  source->Run();
  ASSERT_TRUE(WaitForTotal(*spectrum, Channels, offered));
  ASSERT_TRUE(test::WaitFor([this] { return digitizer.IsExhausted(); }));
  source->StopWorker();
  spectrum->StopWorker();
  ExpectEveryBinAsOffered();
  EXPECT_EQ(digitizer.vendor.CallsOf("free").size(), 20);
}

TEST_F(ASourceAndASpectrum, countsOnlyGrowBetweenResets) {
  Run(*spectrum);
  source->Run();
  std::vector<int> before(Bins);
  for (int round = 0; round < 200; ++round) {
    OfferRandom(5, 5);
    test::DeliverEvents();
    const std::vector<int> now = Counts(*spectrum, 0);
    for (std::size_t bin = 0; bin < Bins; ++bin) {
      ASSERT_LE(before[bin], now[bin]);
      ASSERT_LE(now[bin], expected[0][bin]);
    }
    before = now;
  }
  ASSERT_TRUE(WaitForTotal(*spectrum, Channels, offered));
}

TEST_F(ASourceAndASpectrum, areResetWhileTheyCount) {
  Run(*spectrum);
  source->Run();
  auto gone = Total(*spectrum, Channels);  // what a reset has cleared, at least
  for (int round = 0; round < 100; ++round) {
    OfferRandom(10, 5);
    test::DeliverEvents();
    gone += Total(*spectrum, Channels);
    EXPECT_EQ(Ask(*spectrum, R"({"args":[{"cmd":"reset"}]})"), "[{\"response\": true}]");
    ASSERT_LE(Total(*spectrum, Channels), offered - gone);
  }
  ASSERT_TRUE(test::WaitFor([this] { return digitizer.IsExhausted(); }));
  source->StopWorker();
  spectrum->StopWorker();
  EXPECT_LE(Total(*spectrum, Channels), offered - gone);
  Ask(*spectrum, R"({"args":[{"cmd":"reset"}]})");
  EXPECT_EQ(Total(*spectrum, Channels), 0);
}

TEST_F(ASourceAndASpectrum, countExactlyWhatComesAfterAResetInAQuietMoment) {
  Run(*spectrum);
  source->Run();
  OfferRandom(20, 10);
  ASSERT_TRUE(WaitForTotal(*spectrum, Channels, offered));
  Ask(*spectrum, R"({"args":[{"cmd":"reset"}]})");
  EXPECT_EQ(Total(*spectrum, Channels), 0);
  expected.assign(Channels, std::vector<int>(Bins));
  offered = 0;
  OfferRandom(20, 10);
  ASSERT_TRUE(WaitForTotal(*spectrum, Channels, offered));
  ExpectEveryBinAsOffered();
}

TEST_F(ASourceAndASpectrum, takeANewGainWhileTheyRun) {
  Run(*spectrum);
  source->Run();
  digitizer.Offer(test::OneEvent(0, 10));
  ASSERT_TRUE(WaitForTotal(*spectrum, 1, 1));
  EXPECT_TRUE(spectrum->ParseParameters(QJsonObject{{"parameters", QJsonArray{Parameter("gain", 0.25)}}}));
  digitizer.Offer(test::OneEvent(0, 10));
  ASSERT_TRUE(WaitForTotal(*spectrum, 1, 2));
  const std::vector<int> counts = Counts(*spectrum, 0);
  EXPECT_EQ(counts[10], 1);
  EXPECT_EQ(counts[2], 1);
}

TEST_F(ASourceAndASpectrum, countRawEnergiesWhateverTheCalibration) {
  EXPECT_TRUE(source->ParseParameters(
      test::Object(R"({"parameters":[{"param_name":"energy_calibration_expression","param_value":"x*3+1"}]})")));
  Run(*spectrum);
  source->Run();
  digitizer.Offer(test::OneEvent(0, 10));
  ASSERT_TRUE(WaitForTotal(*spectrum, 1, 1));
  EXPECT_EQ(Counts(*spectrum, 0)[10], 1);
}

using SeveralChains = ChainFixture;

TEST_F(SeveralChains, countEachEventInOneOfThemOnly) {
  const std::unique_ptr<Source> sources[] = {MakeSource(), MakeSource()};
  const std::unique_ptr<Histogram> spectra[] = {MakeSpectrum(1000, 1), MakeSpectrum(1000, 1)};
  for (std::size_t i = 0; i < 2; ++i) {
    Link(*sources[i], *spectra[i]);
    Run(*spectra[i]);
    sources[i]->Run();
  }
  for (quint32 energy = 0; energy < 1000; ++energy) {
    digitizer.Offer(test::OneEvent(0, energy));
  }
  EXPECT_TRUE(test::WaitFor([&] {
    spectra[0]->NewDataInTheInputPin(0);
    spectra[1]->NewDataInTheInputPin(0);
    return Total(*spectra[0], 1) + Total(*spectra[1], 1) >= 1000;
  }));
  for (std::size_t i = 0; i < 2; ++i) {
    sources[i]->StopWorker();
    spectra[i]->StopWorker();
  }
  const std::vector<int> first = Counts(*spectra[0], 0);
  const std::vector<int> second = Counts(*spectra[1], 0);
  for (std::size_t bin = 0; bin < 1000; ++bin) {
    EXPECT_EQ(first[bin] + second[bin], 1) << bin;
  }
}

TEST_F(SeveralChains, aSourceWithoutItsEndpointLeavesItsSpectrumIdle) {
  const auto source = MakeSource("energy", "missing");
  const auto spectrum = MakeSpectrum(8, 1);
  Link(*source, *spectrum);
  Run(*spectrum);
  source->Run();
  test::DeliverEvents();
  spectrum->NewDataInTheInputPin(1);
  EXPECT_EQ(Total(*spectrum, 1), 0);
  EXPECT_EQ(digitizer.vendor.Calls(), QStringList());
}

}  // namespace
