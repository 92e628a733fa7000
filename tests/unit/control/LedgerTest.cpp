#include "control/Ledger.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/unit/control/AnsweringBlock.h"
#include "tests/unit/control/Station.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace {

using korvax::Fate;
using korvax::Ledger;

class ALedger : public testing::Test {
protected:
  // A source, a filter with two outputs and two sinks behind these.
  ALedger() {
    filter.LinkTo(source);
    left.LinkTo(filter, 0);
    right.LinkTo(filter, 1);
  }
  // Pins are read by the blocks behind theirs.
  ~ALedger() override {
    while (!blocks.empty()) {
      blocks.pop_back();
    }
  }

  Station& Add(const QString& name, int inputs, int outputs, std::vector<Fate> fates) {
    auto station = std::make_unique<Station>(name, inputs, outputs, std::move(fates));
    Station& added = *station;
    blocks.push_back(std::move(station));
    return added;
  }

  // A message of so many records, made of one of the source's and booked by every block on its way.
  void PassThrough(int records) {
    const auto count = static_cast<quint64>(records);
    source.account.BookMade(count);
    source.Push(records);
    source.Book(1, Fate::Decoded, 1);
    filter.Take();
    filter.account.BookMade(count);
    filter.Push(records, 0);
    filter.Push(records, 1);
    filter.Book(count, Fate::Copied, count);
    for (Station* const sink : {&left, &right}) {
      sink->Take();
      sink->Book(count, Fate::Counted, count);
    }
  }

  Ledger Now() const { return Ledger::Of(blocks); }
  static const Ledger::Entry& EntryOf(const Ledger& ledger, const QString& name) {
    for (const Ledger::Entry& entry : ledger.Entries()) {
      if (entry.name == name) {
        return entry;
      }
    }
    throw std::out_of_range(name.toStdString());
  }
  Ledger::Entry EntryOf(const QString& name) const { return EntryOf(Now(), name); }
  static QStringList Names(const Ledger& ledger) {
    QStringList names;
    for (const Ledger::Entry& entry : ledger.Entries()) {
      names << entry.name;
    }
    return names;
  }
  static QJsonObject BlockOf(const QJsonObject& ledger, int index) {
    return ledger["blocks"].toArray().at(index).toObject();
  }

  BlockList blocks;
  Station& source = Add("source", 0, 1, {Fate::Decoded, Fate::PassedOver});
  Station& filter = Add("filter", 1, 2, {Fate::Copied});
  Station& left = Add("left", 1, 0, {Fate::Counted, Fate::Other});
  Station& right = Add("right", 1, 0, {Fate::Counted, Fate::Other});
};

TEST_F(ALedger, hasAnEntryForEachBlockInTheirOrder) {
  const Ledger ledger = Now();
  EXPECT_EQ(Names(ledger), QStringList({"source", "filter", "left", "right"}));
  const Ledger::Entry& entry = ledger.Entries()[1];
  EXPECT_EQ(entry.type, "station");
  EXPECT_EQ(entry.path, "path/of/filter");
  EXPECT_EQ(entry.possibleFates, std::vector{Fate::Copied});
}

TEST_F(ALedger, hasNoEntryForBlocksWithoutPins) {
  blocks.push_back(std::make_unique<SilentBlock>("hv", "hv", "p/hv"));
  blocks.push_back(std::make_unique<AnsweringBlock>("commands", "commands", ""));
  Add("last", 1, 0, {});
  EXPECT_EQ(Names(Now()), QStringList({"source", "filter", "left", "right", "last"}));
}

TEST_F(ALedger, ofNoBlocksIsEmptyAndBalanced) {
  const Ledger ledger = Ledger::Of({});
  EXPECT_TRUE(ledger.Entries().empty());
  EXPECT_TRUE(ledger.IsBalanced());
  EXPECT_EQ(ledger.ToJson()["blocks"].toArray(), QJsonArray());
}

TEST_F(ALedger, tellsFromWhichOutputOfWhichBlockAnInputTakes) {
  PassThrough(3);
  const Ledger::Entry entry = EntryOf("right");
  ASSERT_EQ(entry.inputs.size(), 1U);
  EXPECT_EQ(entry.inputs[0].from, "filter");
  EXPECT_EQ(entry.inputs[0].pin, 1);
  EXPECT_EQ(entry.inputs[0].taken, 3U);
  EXPECT_EQ(EntryOf("left").inputs[0].pin, 0);
  EXPECT_EQ(EntryOf("filter").inputs[0].from, "source");
  EXPECT_TRUE(EntryOf("source").inputs.empty());
}

TEST_F(ALedger, hasAnEmptyNameForAnInputWithoutALink) {
  Add("lonely", 1, 0, {});
  const Ledger::Entry entry = EntryOf("lonely");
  ASSERT_EQ(entry.inputs.size(), 1U);
  EXPECT_EQ(entry.inputs[0].from, "");
  EXPECT_EQ(entry.inputs[0].pin, 0);
  EXPECT_EQ(entry.inputs[0].taken, 0U);
  EXPECT_TRUE(Now().IsBalanced());
}

TEST_F(ALedger, hasAnEmptyNameForAnInputLinkedToAPinOfNoBlock) {
  PinOutput stray("energy");
  Add("lonely", 1, 0, {}).Inputs().front()->Connect(&stray);
  EXPECT_EQ(EntryOf("lonely").inputs[0].from, "");
}

TEST_F(ALedger, keepsWhatTwoConsumersOfOneOutputHaveTakenApart) {
  Station& first = Add("first", 1, 0, {Fate::Counted});
  Station& second = Add("second", 1, 0, {Fate::Counted});
  Station& origin = Add("origin", 0, 1, {});
  first.LinkTo(origin);
  second.LinkTo(origin);
  origin.account.BookMade(9);
  for (const int records : {2, 3, 4}) {
    origin.Push(records);
  }
  first.Take();
  second.Take();
  second.Take();
  first.Book(2, Fate::Counted, 2);
  second.Book(7, Fate::Counted, 7);
  EXPECT_EQ(EntryOf("first").inputs[0].taken, 2U);
  EXPECT_EQ(EntryOf("second").inputs[0].taken, 7U);
  EXPECT_EQ(EntryOf("first").inputs[0].from, "origin");
  EXPECT_EQ(EntryOf("second").inputs[0].from, "origin");
  EXPECT_EQ(EntryOf("origin").outputs[0].taken, 9U);
  EXPECT_TRUE(Now().IsBalanced());
}

TEST_F(ALedger, isBalancedWhenEverythingIsBooked) {
  PassThrough(5);
  PassThrough(0);
  PassThrough(8);
  const Ledger ledger = Now();
  EXPECT_TRUE(ledger.IsBalanced());
  for (const Ledger::Entry& entry : ledger.Entries()) {
    EXPECT_EQ(entry.Missing(), 0U) << qPrintable(entry.name);
    EXPECT_EQ(entry.InHand(), 0U) << qPrintable(entry.name);
  }
  EXPECT_EQ(EntryOf(ledger, "source").account.received, 2U + 1U);
  EXPECT_EQ(EntryOf(ledger, "filter").account.received, 13U);
  EXPECT_EQ(EntryOf(ledger, "left").account.fates[Fate::Counted], 13U);
}

TEST_F(ALedger, isBalancedWithRecordsThatWaitInAPinOrInABlock) {
  source.account.BookMade(6);
  source.Push(2);
  source.Push(4);
  source.Book(6, Fate::Decoded, 6);
  filter.Take();
  filter.Book(2, Fate::Copied, 0, 2);
  const Ledger ledger = Now();
  EXPECT_EQ(EntryOf(ledger, "source").outputs[0].waiting, 4U);
  EXPECT_EQ(EntryOf(ledger, "filter").account.waiting, 2U);
  EXPECT_TRUE(ledger.IsBalanced());
}

TEST_F(ALedger, isBalancedWithRecordsThatAFullQueueRefused) {
  source.account.BookMade(10'003);
  for (int i = 0; i < 10'000; ++i) {
    ASSERT_TRUE(source.Push(1));
  }
  EXPECT_FALSE(source.Push(3));
  const Ledger ledger = Now();
  EXPECT_EQ(EntryOf(ledger, "source").outputs[0].dropped, 3U);
  EXPECT_EQ(EntryOf(ledger, "source").InHand(), 0U);
  EXPECT_TRUE(ledger.IsBalanced());
}

TEST_F(ALedger, countsInHandWhatWasTakenAndIsNotBookedYet) {
  source.account.BookMade(5);
  source.Push(5);
  source.Book(5, Fate::Decoded, 5);
  filter.Take();
  EXPECT_EQ(EntryOf("filter").InHand(), 5U);
  EXPECT_EQ(EntryOf("filter").Missing(), 0U);
  EXPECT_FALSE(Now().IsBalanced());
  filter.account.BookMade(5);
  filter.Push(5, 0);
  filter.Push(5, 1);
  filter.Book(5, Fate::Copied, 5);
  EXPECT_EQ(EntryOf("filter").InHand(), 0U);
  EXPECT_TRUE(Now().IsBalanced());
}

TEST_F(ALedger, countsInHandWhatWasMadeAndIsNotPushedToEachOutputYet) {
  source.account.BookMade(4);
  source.Push(4);
  filter.Take();
  filter.Book(4, Fate::Copied, 4);
  filter.account.BookMade(4);
  EXPECT_EQ(EntryOf("filter").InHand(), 8U);
  filter.Push(4, 0);
  EXPECT_EQ(EntryOf("filter").InHand(), 4U);
  EXPECT_FALSE(Now().IsBalanced());
  filter.Push(4, 1);
  EXPECT_TRUE(Now().IsBalanced());
}

TEST_F(ALedger, missesWhatWasReceivedAndHasNoFate) {
  source.account.BookMade(5);
  source.Push(5);
  filter.Take();
  filter.Book(5, Fate::Copied, 2, 1);
  EXPECT_EQ(EntryOf("filter").Missing(), 2U);
  EXPECT_EQ(EntryOf("filter").InHand(), 0U);
  EXPECT_FALSE(Now().IsBalanced());
  EXPECT_FALSE(Now().ToJson()["balanced"].toBool());
  EXPECT_EQ(BlockOf(Now().ToJson(), 1)["missing"], 2);
}

TEST_F(ALedger, missesLessThanNothingWhenARecordHasTwoFates) {
  source.account.BookMade(1);
  source.Push(1);
  filter.Take();
  filter.Book(1, Fate::Copied, 2);
  EXPECT_EQ(BlockOf(Now().ToJson(), 1)["missing"], -1);
  EXPECT_FALSE(Now().IsBalanced());
}

TEST_F(ALedger, isNotBalancedWhenAFilterMadeAnotherNumberThanItPassedOn) {
  source.account.BookMade(2);
  source.Push(2);
  source.Book(1, Fate::Decoded, 1);
  filter.Take();
  filter.account.BookMade(2);
  filter.Push(2, 0);
  filter.Push(2, 1);
  filter.Book(1, Fate::Copied, 1);
  filter.Book(1, Fate::Other, 1);
  EXPECT_EQ(EntryOf("filter").Missing(), 0U);
  EXPECT_EQ(EntryOf("filter").InHand(), 0U);
  EXPECT_FALSE(EntryOf("filter").HasPassedOn());
  EXPECT_FALSE(Now().IsBalanced());
}

TEST_F(ALedger, isNotBalancedWhenRecordsLeaveAQueueForNowhere) {
  PassThrough(3);
  EXPECT_TRUE(Now().IsBalanced());
  filter.account.BookMade(2);
  filter.Push(2, 0);
  filter.Push(2, 1);
  source.account.BookMade(2);
  source.Push(2);
  source.Book(1, Fate::Decoded, 1);
  filter.Take();
  filter.Book(2, Fate::Copied, 2);
  right.Take();
  right.Book(2, Fate::Counted, 2);
  EXPECT_TRUE(Now().IsBalanced()) << "two still wait for the left one";
  DataMessage message;
  ASSERT_TRUE(filter.Outputs()[0]->Take(message));
  EXPECT_FALSE(EntryOf("filter").HasArrived());
  EXPECT_FALSE(Now().IsBalanced());
}

TEST_F(ALedger, sinceAnEarlierOneHoldsWhatWasAdded) {
  PassThrough(5);
  const Ledger earlier = Now();
  PassThrough(3);
  PassThrough(4);
  const Ledger since = Now().Since(earlier);
  EXPECT_EQ(Names(since), QStringList({"source", "filter", "left", "right"}));
  const Ledger::Entry& entry = EntryOf(since, "filter");
  EXPECT_EQ(entry.account.received, 7U);
  EXPECT_EQ(entry.account.fates[Fate::Copied], 7U);
  EXPECT_EQ(entry.account.made, 7U);
  EXPECT_EQ(entry.inputs[0].taken, 7U);
  for (const PinCounts& output : entry.outputs) {
    EXPECT_EQ(output.pushed, 7U);
    EXPECT_EQ(output.taken, 7U);
    EXPECT_EQ(output.waiting, 0U);
    EXPECT_EQ(output.dropped, 0U);
  }
  EXPECT_TRUE(since.IsBalanced());
  EXPECT_EQ(EntryOf("filter").account.received, 12U) << "the ledger itself is as it was";
}

TEST_F(ALedger, sinceAnEarlierOneMayHaveFewerThatWait) {
  source.account.BookMade(9);
  source.Push(4);
  source.Push(5);
  filter.Take();
  filter.Book(4, Fate::Copied, 0, 4);
  const Ledger earlier = Now();
  filter.Take();
  filter.account.BookMade(9);
  filter.Push(9, 0);
  filter.Push(9, 1);
  filter.Book(5, Fate::Copied, 9, 0);
  const QJsonObject since = Now().Since(earlier).ToJson();
  EXPECT_EQ(BlockOf(since, 0)["outputs"].toArray()[0].toObject()["waiting"], -5);
  EXPECT_EQ(BlockOf(since, 1)["waiting"], -4);
  EXPECT_EQ(BlockOf(since, 1)["received"], 5);
  EXPECT_EQ(BlockOf(since, 1)["became"].toObject()["copied"], 9);
  EXPECT_EQ(BlockOf(since, 1)["missing"], 0);
  EXPECT_TRUE(since["balanced"].toBool());
}

TEST_F(ALedger, sinceItselfIsAllZero) {
  PassThrough(5);
  const Ledger ledger = Now();
  const Ledger none = ledger.Since(ledger);
  for (const Ledger::Entry& entry : none.Entries()) {
    EXPECT_EQ(entry.account.received, 0U);
    EXPECT_EQ(entry.account.made, 0U);
    EXPECT_EQ(entry.account.fates.Sum(), 0U);
  }
}

TEST_F(ALedger, keepsOnlyTheBlocksOfAName) {
  Add("left", 1, 0, {});
  Ledger ledger = Now();
  ledger.KeepOnly("left");
  EXPECT_EQ(Names(ledger), QStringList({"left", "left"}));
  EXPECT_EQ(ledger.Entries()[0].inputs[0].from, "filter") << "links stay named";
  ledger.KeepOnly("Left");
  EXPECT_TRUE(ledger.Entries().empty());
}

TEST_F(ALedger, hasExactlyTheseKeysInItsJson) {
  PassThrough(2);
  const QJsonObject ledger = Now().ToJson();
  EXPECT_EQ(ledger.keys(), QStringList({"balanced", "blocks", "time"}));
  EXPECT_EQ(ledger["balanced"], true);
  EXPECT_EQ(ledger["blocks"].toArray().size(), 4);
  const QJsonObject expected = test::Object(R"({
    "name": "filter", "type": "station", "path": "path/of/filter",
    "received": 2, "waiting": 0, "became": {"copied": 2}, "missing": 0, "in_hand": 0, "made": 2,
    "inputs": [{"from": "source", "pin": 0, "taken": 2}],
    "outputs": [{"pushed": 2, "dropped": 0, "taken": 2, "waiting": 0},
                {"pushed": 2, "dropped": 0, "taken": 2, "waiting": 0}]})");
  EXPECT_EQ(BlockOf(ledger, 1), expected) << QJsonDocument(BlockOf(ledger, 1)).toJson().toStdString();
  EXPECT_EQ(BlockOf(ledger, 3)["became"].toObject().keys(), QStringList({"counted", "other"}))
      << "each possible fate, also one that none had";
  EXPECT_EQ(BlockOf(ledger, 3)["outputs"].toArray(), QJsonArray());
}

TEST_F(ALedger, tellsItsTimeInUtc) {
  const QDateTime before = QDateTime::currentDateTimeUtc();
  const QString time = Now().ToJson()["time"].toString();
  const QDateTime after = QDateTime::currentDateTimeUtc();
  EXPECT_TRUE(time.endsWith('Z')) << qPrintable(time);
  const qint64 seconds = QDateTime::fromString(time, Qt::ISODate).toSecsSinceEpoch();
  EXPECT_GE(seconds, before.toSecsSinceEpoch());
  EXPECT_LE(seconds, after.toSecsSinceEpoch());
}

TEST_F(ALedger, tellsNumbersExactlyAsFarAsJsonReadersHoldThem) {
  const quint64 many = (quint64{1} << 53) - 1;
  source.Book(many, Fate::Decoded, many);
  const QByteArray text = QJsonDocument(Now().ToJson()).toJson(QJsonDocument::Compact);
  EXPECT_TRUE(text.contains("\"received\":9007199254740991")) << text.toStdString();
  EXPECT_TRUE(text.contains("\"decoded\":9007199254740991"));
}

}  // namespace
