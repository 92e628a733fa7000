#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"
#include "tests/unit/processing/Events.h"
#include "tests/unit/processing/TeeFixture.h"

namespace {

using test::MessageOf;
using test::Tee;

// The only record of a message, as the class that the test knows it to be.
template <typename Record>
Record& Only(DataMessage& message) {
  EXPECT_EQ(message.batch->records.size(), 1U);
  return static_cast<Record&>(*message.batch->records.at(0));
}

TEST(TeeCopies, carryTheMessagesTextsAndWordsAndTheBatchsTextAndTimestamp) {
  Tee tee("2");
  DataMessage message = MessageOf(test::Energy(1, 2, 3));
  message.dataType = "detector events";
  message.endpointPath = "left\\ENERGY";
  message.word1 = 11;
  message.word2 = 0xFFFFFFFFFFFFFFFF;
  message.word3 = 33;
  message.word4 = 44;
  message.batch->dataType = QLatin1String("waveform");
  message.batch->timestamp = 0xFEDCBA9876543210;
  ASSERT_TRUE(tee.feed.Push(std::move(message)));
  for (std::size_t output : {0U, 1U}) {
    const DataMessage copy = tee.Next(output);
    EXPECT_EQ(copy.dataType, "detector events");
    EXPECT_EQ(copy.endpointPath, "left\\ENERGY");
    EXPECT_EQ(copy.word1, 11U);
    EXPECT_EQ(copy.word2, 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(copy.word3, 33U);
    EXPECT_EQ(copy.word4, 44U);
    ASSERT_NE(copy.batch, nullptr);
    EXPECT_EQ(copy.batch->dataType, QLatin1String("waveform"));
    EXPECT_EQ(copy.batch->timestamp, 0xFEDCBA9876543210U);
    EXPECT_EQ(copy.batch->records.size(), 1U);
  }
}

TEST(TeeCopies, haveEveryFieldOfAnEvent) {
  Tee tee("1");
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->timestamp = 0xFFFFFFFFFFFFFFFE;
  event->arrivalTime = -5;
  event->channel = 0x80000001;
  event->energyRaw = 0xFFFFFFFF;
  event->energy = 12.5;
  event->flag0 = 1;
  event->flag1 = 2;
  event->extraWord = 77;
  event->count = 9;
  ASSERT_TRUE(tee.feed.Push(MessageOf(std::move(event))));
  DataMessage message = tee.Next(0);
  const auto& copy = Only<KorvaxPayload_Energy>(message);
  EXPECT_EQ(copy.PayloadKind(), KorvaxPayload::Kind::Energy);
  EXPECT_EQ(copy.TypeText(), QLatin1String("energy"));
  EXPECT_EQ(copy.count, 9);
  EXPECT_EQ(copy.timestamp, 0xFFFFFFFFFFFFFFFEU);
  EXPECT_EQ(copy.arrivalTime, -5);
  EXPECT_EQ(copy.channel, 0x80000001U);
  EXPECT_EQ(copy.energyRaw, 0xFFFFFFFFU);
  EXPECT_EQ(copy.energy, 12.5);
  EXPECT_EQ(copy.flag0, 1);
  EXPECT_EQ(copy.flag1, 2);
  EXPECT_EQ(copy.extraWord, 77U);
}

TEST(TeeCopies, haveEveryFieldOfAnEventThatStandsInTheBatchAtEachOutput) {
  Tee tee("2");
  DataMessage message = MessageOf();
  message.batch->events = test::Events({7, 0, 5}, 40);
  message.batch->events[1] = test::FullEvent();
  ASSERT_TRUE(tee.feed.Push(std::move(message)));
  for (std::size_t output : {0U, 1U}) {
    SCOPED_TRACE(output);
    const DataMessage copy = tee.Next(output);
    ASSERT_NE(copy.batch, nullptr);
    ASSERT_EQ(copy.batch->events.size(), 3U);
    EXPECT_TRUE(copy.batch->records.empty());
    EXPECT_EQ(copy.batch->events[0].timestamp, 7U);
    EXPECT_EQ(copy.batch->events[0].channel, 40U);
    EXPECT_EQ(copy.batch->events[0].count, 1);
    test::ExpectFullEvent(copy.batch->events[1]);
    EXPECT_EQ(copy.batch->events[2].timestamp, 5U);
    EXPECT_EQ(copy.batch->events[2].channel, 42U);
    EXPECT_EQ(tee.Next(output).batch, nullptr) << "one message for each output";
  }
}

TEST(TeeCopies, ofEventsThatStandInTheBatchBelongToTheirReadersAlone) {
  Tee tee("2");
  DataMessage message = MessageOf();
  message.batch->events.push_back(test::FullEvent());
  ASSERT_TRUE(tee.feed.Push(std::move(message)));
  DataMessage first = tee.Next(0);
  const DataMessage second = tee.Next(1);
  first.batch->events.at(0) = {};
  first.batch.reset();
  test::ExpectFullEvent(second.batch->events.at(0));
}

TEST(TeeCopies, belongToTheirReadersAlone) {
  Tee tee("2");
  auto rates = std::make_unique<KorvaxPayload_RateCounters>(2);
  rates->ratesIn = {1.5, 2.5};
  const auto* const original = rates.get();
  ASSERT_TRUE(tee.feed.Push(MessageOf(std::move(rates))));
  DataMessage first = tee.Next(0);
  DataMessage second = tee.Next(1);
  EXPECT_NE(&Only<KorvaxPayload_RateCounters>(first), original);
  EXPECT_NE(&Only<KorvaxPayload_RateCounters>(first), &Only<KorvaxPayload_RateCounters>(second));
  Only<KorvaxPayload_RateCounters>(first).ratesIn = {9.0, 9.0};
  first.batch.reset();
  EXPECT_EQ(Only<KorvaxPayload_RateCounters>(second).ratesIn, (std::vector<double>{1.5, 2.5}));
}

TEST(TeeCopies, ofWavesShareNoSamplesThatAreChanged) {
  Tee tee("2");
  auto waves = std::make_unique<KorvaxPayload_Waves>();
  waves->waves.push_back(std::make_unique<KorvaxPayload_Wave>());
  static_cast<KorvaxPayload_Wave&>(*waves->waves[0]).analog = {1.0, 2.0};
  ASSERT_TRUE(tee.feed.Push(MessageOf(std::move(waves))));
  DataMessage first = tee.Next(0);
  DataMessage second = tee.Next(1);
  static_cast<KorvaxPayload_Wave&>(*Only<KorvaxPayload_Waves>(first).waves.at(0)).analog[0] = 7.0;
  EXPECT_EQ(static_cast<KorvaxPayload_Wave&>(*Only<KorvaxPayload_Waves>(second).waves.at(0)).analog,
            (WaveSamples<double>{1.0, 2.0}));
}

TEST(TeeCopies, ofWavesLoseHeaderTypeTextAndWords_isKept) {
  Tee tee("1");
  auto waves = std::make_unique<KorvaxPayload_Waves>();
  waves->timestamp = 5;
  waves->headerWord1 = 6;
  waves->samplesPerWave = 2;
  waves->headerWord2 = 7;
  waves->headerWord3 = 8;
  auto wave = std::make_unique<KorvaxPayload_Wave>();
  wave->word1 = wave->word2 = wave->word3 = 9;
  wave->count = 3;
  wave->analog = {1.0, 2.0};
  wave->digital = {3, 4};
  waves->waves.push_back(std::move(wave));
  ASSERT_TRUE(tee.feed.Push(MessageOf(std::move(waves))));
  DataMessage message = tee.Next(0);
  const auto& copy = Only<KorvaxPayload_Waves>(message);
  EXPECT_EQ(copy.TypeText(), QLatin1String("waveform"));
  EXPECT_EQ(copy.timestamp, 0U);
  EXPECT_EQ(copy.headerWord1, 0U);
  EXPECT_EQ(copy.samplesPerWave, 0);
  EXPECT_EQ(copy.headerWord2, 0U);
  EXPECT_EQ(copy.headerWord3, 0U);
  ASSERT_EQ(copy.waves.size(), 1U);
  const auto& copiedWave = static_cast<const KorvaxPayload_Wave&>(*copy.waves[0]);
  EXPECT_EQ(copiedWave.TypeText(), QLatin1String());
  EXPECT_EQ(copiedWave.count, 0);
  EXPECT_EQ(copiedWave.word1, 0U);
  EXPECT_EQ(copiedWave.analog, (WaveSamples<double>{1.0, 2.0}));
  EXPECT_EQ(copiedWave.digital, (WaveSamples<quint32>{3, 4}));
}

TEST(TeeCopies, areLeftWhenTheIncomingRecordsAreDestroyed) {
  Tee tee("2");
  int destroyed = 0;
  const auto note = [&destroyed] { ++destroyed; };
  ASSERT_TRUE(tee.feed.Push(MessageOf(test::Watched(note), test::Watched(note))));
  EXPECT_EQ(destroyed, 2) << "the incoming batch is never handed on";
  tee.Next(0);
  EXPECT_EQ(destroyed, 4);
  tee.Next(1);
  EXPECT_EQ(destroyed, 6);
}

TEST(TeeCopies, keepTheRecordsOrderAndKinds) {
  Tee tee("1");
  ASSERT_TRUE(tee.feed.Push(MessageOf(test::Energy(2, 0), std::make_unique<KorvaxPayload_RateCounters>(1),
                                      std::make_unique<KorvaxPayload_Waves>(), test::Energy(1, 0))));
  const DataMessage copy = tee.Next(0);
  ASSERT_EQ(copy.batch->records.size(), 4U);
  EXPECT_EQ(copy.batch->records[0]->PayloadKind(), KorvaxPayload::Kind::Energy);
  EXPECT_EQ(copy.batch->records[1]->PayloadKind(), KorvaxPayload::Kind::RateCounters);
  EXPECT_EQ(copy.batch->records[2]->PayloadKind(), KorvaxPayload::Kind::Waves);
  EXPECT_EQ(static_cast<const KorvaxPayload_Energy&>(*copy.batch->records[3]).channel, 1U);
}

TEST(TeeCopies, existOfMessagesWithoutRecordsButNotWithoutABatch) {
  Tee tee("1");
  ASSERT_TRUE(tee.feed.Push(MessageOf()));
  ASSERT_TRUE(tee.feed.Push(DataMessage()));
  ASSERT_TRUE(tee.feed.Push(MessageOf(test::Energy(0, 0, 4))));
  EXPECT_EQ(tee.block.Outputs()[0]->Level(), 2);
  const DataMessage empty = tee.Next(0);
  ASSERT_NE(empty.batch, nullptr);
  EXPECT_TRUE(empty.batch->records.empty());
  EXPECT_EQ(tee.Timestamps(0), std::vector<quint64>{4});
}

}  // namespace
