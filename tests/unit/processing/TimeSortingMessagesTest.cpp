#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"
#include "tests/unit/processing/SorterFixture.h"

namespace {

class SorterMessages : public test::SorterFixture {
protected:
  /// An envelope that can be told from others; `batch` may be null.
  static DataMessage Envelope(quint64 number, std::unique_ptr<PayloadBatch> batch) {
    const QString text = QString::number(number);
    return {"type " + text, "board\\" + text, number, number + 1, std::move(batch), number + 2, number + 3};
  }
  static void ExpectEnvelope(const DataMessage& message, quint64 number) {
    EXPECT_EQ(message.dataType, "type " + QString::number(number));
    EXPECT_EQ(message.endpointPath, "board\\" + QString::number(number));
    EXPECT_EQ(message.word1, number);
    EXPECT_EQ(message.word2, number + 1);
    EXPECT_EQ(message.word3, number + 2);
    EXPECT_EQ(message.word4, number + 3);
  }
  void PushEnvelope(quint64 number, const Timestamps& timestamps) {
    ASSERT_TRUE(feed.Push(Envelope(number, MessageOfEvents(timestamps).batch)));
  }
};

TEST_F(SorterMessages, ofEveryGroupBearTheTextsAndWordsOfTheLastMessageTaken_isKept) {
  PushEnvelope(10, {0, 1'000});
  Drain();
  PassMicroseconds(6'000);
  PushEnvelope(20, {50});
  PushEnvelope(30, {8'000});
  Drain();
  for (const Timestamps& group : Groups{{0, 50}, {1'000}}) {
    DataMessage message;
    ASSERT_EQ(reader.Pop(message), PinInput::Taken);
    ExpectEnvelope(message, 30);
    EXPECT_EQ(test::TimestampsOf(*message.batch), group);
  }
}

TEST_F(SorterMessages, haveTheTimestampOfTheGroupsFirstEventAndItsTypeText) {
  Push({700, 600, 5'000});
  Drain();
  PassMicroseconds(6'000);
  PushAndDrain({9'000});
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  EXPECT_EQ(message.batch->timestamp, 600U);
  EXPECT_EQ(message.batch->dataType, QLatin1String("energy"));
}

TEST_F(SorterMessages, handOnTheEventsAsTheyCame) {
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->channel = 0x80000003;
  event->energyRaw = 4'000'000'000;
  event->energy = 1.5;
  event->extraWord = 6;
  ASSERT_TRUE(feed.Push(test::MessageOf(std::move(event))));
  Push({50});
  Drain();
  PassMicroseconds(6'000);
  PushAndDrain({});
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  const KorvaxPayload_Energy& emitted = test::EventAt(*message.batch, 0);
  EXPECT_EQ(emitted.channel, 0x80000003U);
  EXPECT_EQ(emitted.energyRaw, 4'000'000'000U);
  EXPECT_EQ(emitted.energy, 1.5);
  EXPECT_EQ(emitted.extraWord, 6U);
}

TEST_F(SorterMessages, keepEveryFieldOfTheirEventsButTheArrivalWhichIsThatOfTheMessage) {
  DataMessage byValue = test::MessageOf();
  byValue.batch->events.push_back(test::FullEvent());
  ASSERT_TRUE(feed.Push(std::move(byValue)));
  Drain();
  PassMicroseconds(10);
  ASSERT_TRUE(feed.Push(test::MessageOf(std::make_unique<KorvaxPayload_Energy>(test::FullEvent()))));
  Drain();
  PassMicroseconds(6'000);
  PushAndDrain({});
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  ASSERT_EQ(message.batch->events.size(), 2U);
  EXPECT_TRUE(message.batch->records.empty());
  const bool inOrder = message.batch->events[0].arrivalTime < message.batch->events[1].arrivalTime;
  test::ExpectFullEvent(message.batch->events[inOrder ? 0 : 1], 1'000'000'000'000);
  test::ExpectFullEvent(message.batch->events[inOrder ? 1 : 0], 1'000'000'000'010);
}

TEST_F(SorterMessages, withoutABatchBringTheirTimeAndEnvelopeOnly) {
  PushAndDrain({0, 1'000});
  PassMicroseconds(6'000);
  ASSERT_TRUE(feed.Push(Envelope(40, nullptr)));
  Drain();
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  ExpectEnvelope(message, 40);
  EXPECT_EQ(TakeGroups(), Groups{{1'000}});
}

TEST_F(SorterMessages, withOtherRecordsLoseThemAndOneLineTellsOfIt) {
  const QString line =
      "Time sorting \"sorter\" discards records of type \"waveform\" : only energy events can be sorted. Connect "
      "it "
      "to a source of those";
  std::atomic<int> destroyed = 0;
  const auto watched = [&destroyed] { return test::Watched([&destroyed] { ++destroyed; }); };
  feed.Push(test::MessageOf(watched(), test::Energy(0, 0, 20), watched(), test::Energy(0, 0, 10)));
  feed.Push(test::MessageOf(std::make_unique<KorvaxPayload_Waves>(), std::make_unique<KorvaxPayload_Wave>(),
                            std::make_unique<KorvaxPayload_RateCounters>(2), watched()));
  Drain();
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(log.Count(line), 1);
  PassMicroseconds(6'000);
  feed.Push(test::MessageOf(watched()));
  Drain();
  EXPECT_EQ(TakeGroups(), (Groups{{10, 20}}));
  EXPECT_EQ(log.Lines().filter("discards").size(), 1);
}

TEST_F(SorterMessages, areDroppedSilentlyByAFullOutput) {
  Timestamps timestamps;
  for (quint64 i = 0; i < 10'050; ++i) {
    timestamps.push_back(1'000 * i);
  }
  PushAndDrain(timestamps);
  PassMicroseconds(6'000);
  log.Clear();
  ASSERT_TRUE(feed.Push(DataMessage()));
  Drain();
  EXPECT_EQ(outputs.front()->Level(), 10'000);
  EXPECT_EQ(outputs.front()->DroppedRecords(), 50U);
  EXPECT_EQ(log.Lines(), QStringList{"Order buffer full!"}) << "of the message that woke it, not of the output";
}

}  // namespace
