#include "framework/KorvaxPayload_RateCounters.h"
#include "tests/unit/acquisition/SourceFixture.h"

#include <QElapsedTimer>

namespace {

constexpr double HalfAMonthMs = 1e9;

class SourceThreadTest : public SourceFixture {
protected:
  SourceThreadTest() { energies_.Add(EnergyRecord(5, 1, 100)).Add(EnergyRecord(6, 2, 200)); }

  static test::Bytes RateRecord() {
    return test::Bytes().U32(1).Unused(4).Pointer(nullptr).Pointer(nullptr).Pointer(nullptr).Pointer(nullptr);
  }

  double IntervalOfNextRates() {
    const DataMessage message = NextMessage();
    const auto* rates = message.batch
                            ? korvax::PayloadCast<KorvaxPayload_RateCounters>(message.batch->records.at(0).get())
                            : nullptr;
    return rates == nullptr ? -1.0 : rates->interval;
  }

  // One read of each kind that counts as an error, and one with a negative count, which doesn't.
  void FeedErrors() {
    reads_.Next([](void*) { return -1; });
    reads_.Next([this](void* holder) {  // an error code with entries
      energies_.FillHolder(holder);
      return 5;
    });
    reads_.Next([this](void* holder) {  // no entries
      energies_.FillHolder(holder, 0);
      return 0;
    });
  }
  void FeedNegativeCount(qint32 count) {
    reads_.Next([this, count](void* holder) {
      energies_.FillHolder(holder, count);
      return 0;
    });
  }

  test::RawBlock energies_;
};

TEST_F(SourceThreadTest, EveryBlockIsReadWithThePinTextDecodedAndHandedBackOnce) {
  std::vector<const void*> handedBack;
  vendor_.onFree = [&](void* holder) {
    const void* entries = nullptr;
    std::memcpy(&entries, holder, sizeof entries);
    handedBack.push_back(entries);
  };
  test::RawBlock second;
  second.Add(EnergyRecord(9, 3, 300));
  Feed(energies_);
  Feed(second);
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(3));
  EXPECT_EQ(vendor_.Calls(),
            (QStringList{"read endpoints\\energy", "free endpoints\\energy", "read endpoints\\energy",
                         "free endpoints\\energy", "read endpoints\\energy"}));
  EXPECT_EQ(handedBack, (std::vector<const void*>{energies_.Entries(), second.Entries()}));
}

TEST_F(SourceThreadTest, AMessageCarriesTheDataTypeTheEndpointAndTheBatch) {
  Feed(energies_);
  MakeRunning("energy");
  const DataMessage message = NextMessage();
  EXPECT_EQ(message.dataType, QString("energy"));
  EXPECT_EQ(message.endpointPath, QString("det\\energy"));
  ASSERT_NE(message.batch, nullptr);
  EXPECT_EQ(message.batch->dataType, QLatin1String("energy"));
  EXPECT_EQ(message.batch->timestamp, 6U);
  EXPECT_EQ(message.batch->events.size(), 2U);
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_FALSE(HasMessage());
}

TEST_F(SourceThreadTest, APairMessageCarriesTheSourcesTypeAroundABatchOfEnergies) {
  test::RawBlock pairs;
  for (quint32 pair = 0; pair < 2; ++pair) {
    pairs.Add(
        test::Bytes().Unused(16).U64(7).U32(pair).U32(1).U32(2).Unused(4).F64(0).F64(0).Unused(8).U32(0).U32(0));
  }
  Feed(pairs);
  MakeRunning("energy_pair");
  for (int pair = 0; pair < 2; ++pair) {
    const DataMessage message = NextMessage();
    EXPECT_EQ(message.dataType, QString("energy_pair"));
    ASSERT_NE(message.batch, nullptr);
    EXPECT_EQ(message.batch->dataType, QLatin1String("energy"));
    EXPECT_EQ(message.batch->events.size(), 2U);
  }
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_FALSE(HasMessage());
}

TEST_F(SourceThreadTest, FailedAndEmptyReadsYieldNothingAndReadingGoesOn) {
  FeedErrors();
  Feed(energies_);
  MakeRunning("energy");
  EXPECT_NE(NextMessage().batch, nullptr);
  ASSERT_TRUE(WaitForReads(5));
  EXPECT_FALSE(HasMessage());
  EXPECT_EQ(vendor_.CallsOf("free").size(), 1);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceThreadTest, ANegativeCountIsNeitherDecodedNorHandedBack) {
  FeedNegativeCount(-1);
  FeedNegativeCount(std::numeric_limits<qint32>::min());
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(3));
  EXPECT_FALSE(HasMessage());
  EXPECT_TRUE(vendor_.CallsOf("free").isEmpty());
}

TEST_F(SourceThreadTest, AnUnknownDataTypeYieldsNothingButTheBlockIsHandedBack) {
  Feed(energies_);
  Feed(energies_);
  MakeRunning("mystery");
  ASSERT_TRUE(WaitForReads(3));
  EXPECT_FALSE(HasMessage());
  EXPECT_EQ(vendor_.CallsOf("free"), (QStringList{"free endpoints\\energy", "free endpoints\\energy"}));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceThreadTest, ACountWithoutEntriesIsHandedBackUnread) {
  reads_.Next([](void* holder) {
    std::memset(holder, 0, 12);
    const qint32 count = 1000;
    std::memcpy(static_cast<std::byte*>(holder) + 12, &count, sizeof count);
    return 0;
  });
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_FALSE(HasMessage());
  EXPECT_EQ(vendor_.CallsOf("free").size(), 1);
}

TEST_F(SourceThreadTest, ACountThatCannotBeTrueIsHandedBackUndecoded) {
  reads_.Next([this](void* holder) {
    energies_.FillHolder(holder);
    const qint32 count = 16'777'217;
    std::memcpy(static_cast<std::byte*>(holder) + 12, &count, sizeof count);
    return 0;
  });
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_FALSE(HasMessage());
  EXPECT_EQ(vendor_.CallsOf("free").size(), 1);
}

TEST_F(SourceThreadTest, EveryReadGetsAHolderWithItsCountZeroed) {
  std::vector<qint32> counts;
  for (int read = 0; read < 3; ++read) {
    reads_.Next([&](void* holder) {
      qint32 count = -1;
      std::memcpy(&count, static_cast<std::byte*>(holder) + 12, sizeof count);
      counts.push_back(count);
      energies_.FillHolder(holder);
      return 0;
    });
  }
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(4));
  EXPECT_EQ(counts, (std::vector<qint32>{0, 0, 0}));
}

TEST_F(SourceThreadTest, MissingReadFunctionLeavesTheSourceTryingAgain) {
  vendor_.missing = {"CAENDig2_ReadDataByQuery"};
  QJsonObject configuration = Configuration("waveform", "endpoints\\wave");
  configuration.remove("parameters");
  Make(configuration).Run();
  EXPECT_TRUE(test::WaitFor([this] { return log_.Count("W ERR") >= 3; }));
  EXPECT_TRUE(vendor_.CallsOf("read").isEmpty());
}

TEST_F(SourceThreadTest, AWaveSourceConfiguresAndStartsItsEndpointBeforeItReads) {
  MakeRunning("waveform", "endpoints\\energy");
  ASSERT_TRUE(WaitForReads(1));
  EXPECT_EQ(vendor_.Calls(),
            (QStringList{"command config-energy-1", "command config-energy-2", "command start-energy-1",
                         "command start-energy-2", "read endpoints\\energy"}));
}

TEST_F(SourceThreadTest, AWaveSourceOnlyConfiguresADisabledEndpoint) {
  MakeRunning("waveform", "endpoints\\wave");
  ASSERT_TRUE(WaitForReads(1));
  EXPECT_EQ(vendor_.Calls(),
            (QStringList{"command config-wave-1", "command config-wave-2", "read endpoints\\wave"}));
}

TEST_F(SourceThreadTest, OtherSourcesSendNoCommandsOfTheirOwn) {
  for (const char* type : {"energy", "energy_pair", "rate_counters", "mystery"}) {
    SCOPED_TRACE(type);
    vendor_.ClearCalls();
    reads_.Next([](void*) { return -1; });
    MakeRunning(type);
    ASSERT_TRUE(WaitForReads(2));
    EXPECT_EQ(vendor_.Calls(), (QStringList{"read endpoints\\energy", "read endpoints\\energy"}));
    EndSource();
  }
}

TEST_F(SourceThreadTest, AWaveSourceLogsEveryCycle) {
  test::RawBlock waves;
  waves.Add(test::Bytes().U64(3).U32(0).Unused(4).I32(4).U32(0).U32(0).I32(0).Pointer(nullptr));
  Feed(waves);
  FeedErrors();
  FeedNegativeCount(-3);
  MakeRunning("waveform");
  ASSERT_TRUE(WaitForReads(6));
  EXPECT_EQ(log_.Lines(), (QStringList{"W OK", "W ERR", "W ERR", "W ERR", "W OK"}));
  const DataMessage message = NextMessage();
  EXPECT_EQ(message.dataType, QString("waveform"));
  EXPECT_EQ(message.batch->dataType, QLatin1String("waveform"));
  EXPECT_EQ(message.batch->timestamp, 3U);
}

TEST_F(SourceThreadTest, AFailedWaveReadIsLoggedBeforeThePauseAndAGoodOneAfterIt) {
  test::RawBlock waves;
  waves.Add(test::Bytes().U64(3).U32(0).Unused(4).I32(4).U32(0).U32(0).I32(0).Pointer(nullptr));
  Make(Configuration("waveform", "endpoints\\energy"));
  SetParameter("download_interval", HalfAMonthMs);
  reads_.Next([](void*) { return -1; });
  source_->Run();
  EXPECT_TRUE(test::WaitFor([this] { return log_.Count("W ERR") == 1; }));
  source_->StopWorker();

  log_.Clear();
  Make(Configuration("waveform", "endpoints\\energy"));
  SetParameter("download_interval", HalfAMonthMs);
  Feed(waves);
  source_->Run();
  EXPECT_NE(NextMessage().batch, nullptr);
  EXPECT_TRUE(log_.Lines().isEmpty());
  source_->StopWorker();
  EXPECT_EQ(log_.Lines(), QStringList{"W OK"});
}

TEST_F(SourceThreadTest, ABlockOfRatesEndsWithAPauseOfHalfASecondBeforeItIsHandedBack) {
  test::RawBlock rates;
  rates.Add(RateRecord(), 77).Add(RateRecord(), 78);
  QElapsedTimer timer;
  std::atomic<qint64> untilFree = 0;
  reads_.Next([&](void* holder) {
    timer.start();
    rates.FillHolder(holder);
    return 0;
  });
  vendor_.onFree = [&](void*) { untilFree = timer.elapsed(); };
  MakeRunning("rate_counters");
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_GE(untilFree, 499);  // a lower bound holds on a machine of any speed
  EXPECT_EQ(NextMessage().batch->timestamp, 77U);
  const DataMessage message = NextMessage();
  EXPECT_EQ(message.dataType, QString("rate_counters"));
  EXPECT_EQ(message.endpointPath, QString("det\\energy"));
  EXPECT_EQ(message.batch->timestamp, 78U);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceThreadTest, ABlockOfRatesWithoutChannelsPausesToo) {
  test::RawBlock rates;
  rates.Add(test::Bytes().U32(0).Unused(36));
  Feed(rates);
  QElapsedTimer timer;
  timer.start();
  MakeRunning("rate_counters");
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_GE(timer.elapsed(), 499);
  EXPECT_FALSE(HasMessage());
}

TEST_F(SourceThreadTest, StartAndFlushRestartTheClockOfTheRatesAndStopDoesNot) {
  test::RawBlock rates;
  rates.Add(RateRecord());
  for (void (Source::*restart)() : {&Source::Start, &Source::Flush}) {
    QElapsedTimer sinceConstruction;
    MakeRunning("rate_counters", "endpoints\\wave");
    sinceConstruction.start();
    ASSERT_TRUE(test::WaitFor([&] { return sinceConstruction.elapsed() >= 100; }));
    source_->Stop();
    Feed(rates);
    EXPECT_GE(IntervalOfNextRates(), 0.1);

    QElapsedTimer sinceRestart;
    sinceRestart.start();
    (source_.get()->*restart)();
    Feed(rates);
    const double interval = IntervalOfNextRates();
    EXPECT_LE(interval, static_cast<double>(sinceRestart.elapsed() + 1) / 1000.0 + 0.001);
    EndSource();
  }
}

}  // namespace
