#include "tests/chain/LedgerFixture.h"

#include <random>

namespace {

using korvax::Fate;

// source - tee - spectrum
//             |- dumper
//             \- sorter - fan - position, times
// The figures of all blocks are compared when their workers have ended: the sorter passes groups on at times of
// its own.
class TheLedgerOfAFullChain : public test::LedgerFixture {
protected:
  static constexpr quint32 MostInABlock = 8;

  TheLedgerOfAFullChain() {
    Link(source, tee);
    LinkOutput(tee, 0, spectrum);
    LinkOutput(tee, 1, dumper);
    LinkOutput(tee, 2, sorter);
    Link(sorter, fan);
    LinkOutput(fan, 0, position);
    LinkOutput(fan, 1, times);
    RunSink(spectrum);
    RunSink(position);
    StartRun(dumper, "run_1");
  }

  // The events of the last message stay, until a later one comes.
  bool IsSorted(const Ledger& ledger) const override { return LedgerFixture::IsSorted(ledger, MostInABlock); }

  quint32 Below(quint32 limit) { return static_cast<quint32>(random() % limit); }
  // Blocks of a few events, some of their entries without a record; counts what it offers.
  void OfferRandom(int blocks) {
    for (int b = 0; b < blocks; ++b) {
      test::RawBlock block;
      for (quint32 count = Below(MostInABlock) + 1; count > 0; --count) {
        if (Below(10) == 0) {
          block.AddPointer(nullptr);
          ++offeredWithout;
        } else {
          time += Below(80);
          block.Add(test::EnergyRecord(Below(6), Below(200), time));
          ++offered;
        }
      }
      digitizer.Offer(std::move(block));
    }
  }

  // What the ledger says at rest, against what was offered and what has come out.
  void ExpectAgreement(const Ledger& ledger) {
    ExpectBalanced(ledger);
    const auto& board = EntryOf(ledger, "source");
    EXPECT_EQ(board.account.received, offered + offeredWithout);
    EXPECT_EQ(board.account.fates[Fate::Decoded], offered);
    EXPECT_EQ(board.account.fates[Fate::PassedOver], offeredWithout);
    EXPECT_EQ(board.account.made, offered);
    EXPECT_EQ(EntryOf(ledger, "tee").account.fates[Fate::Copied], offered);
    EXPECT_EQ(EntryOf(ledger, "spectrum").account.fates[Fate::Counted], static_cast<quint64>(Total(spectrum, 8)));
    EXPECT_EQ(EntryOf(ledger, "spectrum").account.received, offered);
    EXPECT_EQ(EntryOf(ledger, "dumper").account.fates[Fate::Written], RecordsIn("run_1/dumper_0.bin"));
    EXPECT_EQ(EntryOf(ledger, "dumper").account.fates[Fate::Written], offered);
    ExpectAgreementBehindTheSorter(ledger);
  }
  void ExpectAgreementBehindTheSorter(const Ledger& ledger) {
    const auto& sorted = EntryOf(ledger, "sorter").account;
    const quint64 grouped = sorted.fates[Fate::Grouped];
    EXPECT_EQ(sorted.received, offered);
    EXPECT_EQ(grouped + sorted.waiting + sorted.fates[Fate::DroppedFull], offered);
    EXPECT_EQ(EntryOf(ledger, "fan").account.fates[Fate::Copied], grouped);
    EXPECT_EQ(EntryOf(ledger, "times").account.fates[Fate::Counted], grouped);
    EXPECT_EQ(EntryOf(ledger, "times").account.fates[Fate::Counted], CountedTimes());
    const auto& mapped = EntryOf(ledger, "position").account.fates;
    EXPECT_EQ(mapped[Fate::Counted] + mapped[Fate::OutOfRange] + mapped[Fate::RepeatedChannel], grouped);
    EXPECT_GT(mapped[Fate::Counted], 0U);
    EXPECT_GT(mapped[Fate::RepeatedChannel], 0U);
  }
  quint64 CountedTimes() {
    quint64 total = 0;
    for (int channel = 0; channel < 8; ++channel) {
      const QByteArray query =
          QByteArray(R"({"cmd":"get_data","channels":[)") + QByteArray::number(channel) + "]}";
      const QJsonArray bins =
          test::Array(AskSink(times, query.constData()).toUtf8())[0].toObject()["data"].toArray();
      for (const QJsonValue& bin : bins) {
        total += static_cast<quint64>(bin.toInt());
      }
    }
    return total;
  }

  Source& source = Add("source", MakeSource());
  Process_Tee& tee = Add("tee", MakeTee(3));
  Histogram& spectrum = Add("spectrum", MakeSpectrum(100, 8));
  DataDumper& dumper = AddDumper("dumper");
  Process_Time_Sorting& sorter = Add("sorter", MakeSorter());
  Process_Tee& fan = Add("fan", MakeTee(2));
  Position& position = Add("position", Make<Position>(test::Array(R"([
      {"param_name":"positions","param_value":[0,0]},
      {"param_name":"correlated_channels","param_value":[1,0]}])")));
  time_distribution& times =
      Add("times", Make<time_distribution>(
                       {Parameter("binning", 1000), Parameter("bin_number", 50), Parameter("ch_number", 8)}));
  std::mt19937 random{20260601};
  quint64 time = 0;
  quint64 offered = 0;
  quint64 offeredWithout = 0;
};

TEST_F(TheLedgerOfAFullChain, agreesWithWhatTheBoardHandedOutAndWithWhatCameOut) {
  OfferRandom(1'000);
  source.Run();
  ASSERT_TRUE(Settle());
  Stop();
  ExpectAgreement(Now());
}

TEST_F(TheLedgerOfAFullChain, missesNothingInAnyReadingWhileDataFlows) {
  constexpr int Portions = 40;
  source.Run();
  for (int portion = 0; portion < Portions; ++portion) {
    OfferRandom(100);
    for (int reading = 0; reading < 20; ++reading) {
      ExpectNothingMissing(Now());
      test::DeliverEvents();
      WakeAll();
      ExpectNothingMissing(Now());
    }
  }
  ASSERT_TRUE(Settle([this] { ExpectNothingMissing(Now()); }));
  Stop();
  ExpectAgreement(Now());
}

TEST_F(TheLedgerOfAFullChain, ofAPartOfTheTimeIsTheDifference) {
  OfferRandom(300);
  source.Run();
  ASSERT_TRUE(Settle());
  const Ledger before = Now();
  const quint64 offeredBefore = offered;
  OfferRandom(200);
  ASSERT_TRUE(Settle());
  Stop();
  const Ledger since = Now().Since(before);
  for (const Ledger::Entry& entry : since.Entries()) {
    EXPECT_EQ(entry.Missing(), 0U) << qPrintable(entry.name);
  }
  EXPECT_EQ(EntryOf(since, "source").account.made, offered - offeredBefore);
  EXPECT_EQ(EntryOf(since, "dumper").account.fates[Fate::Written], offered - offeredBefore);
  EXPECT_EQ(EntryOf(since, "tee").inputs[0].taken, offered - offeredBefore);
}

TEST_F(TheLedgerOfAFullChain, isStillClosedWhenItWasStoppedWithFullQueues) {
  OfferRandom(2'000);
  source.Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  ExpectNothingMissing(Now());
  Stop();
  ExpectAgreement(Now());
}

// Blocks of the board whose numbers can't be true stand between good ones.
TEST_F(TheLedgerOfAFullChain, hasGarbageOfTheBoardAsRefused) {
  constexpr int Garbage = 60;
  static const std::byte nowhere{};
  std::atomic<int> reads = 0;
  digitizer.vendor.onRead = [&, read = digitizer.vendor.onRead](void* holder) {
    const int number = reads++;
    if (number % 2 == 0 || number >= 2 * Garbage) {
      return read(holder);
    }
    const std::byte* const entries = number % 3 == 0 ? nullptr : &nowhere;
    const qint32 count = number % 3 == 0 ? 7 : number % 3 == 1 ? 16'777'217 : -3;
    std::memcpy(holder, &entries, sizeof entries);
    std::memcpy(static_cast<std::byte*>(holder) + 12, &count, sizeof count);
    return 0;
  };
  digitizer.vendor.onFree = [&, free = digitizer.vendor.onFree](void* holder) {
    const std::byte* entries = nullptr;
    std::memcpy(&entries, holder, sizeof entries);
    if (entries != nullptr && entries != &nowhere) {
      free(holder);
    }
  };
  OfferRandom(1'000);
  source.Run();
  ASSERT_TRUE(test::WaitFor([&] { return reads > 2 * Garbage; }));
  ASSERT_TRUE(Settle([this] { ExpectNothingMissing(Now()); }));
  Stop();  // the functions of the board go before it
  const Ledger ledger = Now();
  ExpectBalanced(ledger);
  // Of 60 numbers 1, 3, 5, ... 119 each remainder by 3 comes up 20 times; negative counts name no entries.
  const quint64 refused = 20 * 7 + 20 * quint64{16'777'217};
  EXPECT_EQ(EntryOf(ledger, "source").account.fates[Fate::Refused], refused);
  EXPECT_EQ(EntryOf(ledger, "source").account.received, refused + offered + offeredWithout);
  EXPECT_EQ(EntryOf(ledger, "source").account.made, offered);
  EXPECT_EQ(static_cast<quint64>(Total(spectrum, 8)), offered);
}

// A sink whose thread is not woken falls behind.
class TheLedgerOfASlowConsumer : public test::LedgerFixture {
protected:
  TheLedgerOfASlowConsumer() {
    Link(source, tee);
    LinkOutput(tee, 0, quick);
    LinkOutput(tee, 1, slow);
    RunSink(quick);
    RunSink(slow);
  }

  Source& source = Add("source", MakeSource());
  Process_Tee& tee = Add("tee", MakeTee(2));
  Histogram& quick = Add("quick", MakeSpectrum(4, 1));
  Histogram& slow = Add("slow", MakeSpectrum(4, 1));
};

TEST_F(TheLedgerOfASlowConsumer, hasWhatItsFullQueueRefusedAsDropped) {
  slow.Inputs()[0]->blockSignals(true);
  source.Run();
  for (int offered = 0; offered < 12'000; offered += 1000) {
    for (int i = 0; i < 1000; ++i) {
      digitizer.Offer(test::OneEvent(0, 1));
    }
    ASSERT_TRUE(Settle([this] { ExpectNothingMissing(Now()); }));
  }
  const Ledger full = Now();
  ExpectBalanced(full);
  EXPECT_EQ(EntryOf(full, "tee").account.made, 12'000U);
  EXPECT_EQ(EntryOf(full, "tee").outputs[0].dropped, 0U);
  EXPECT_EQ(EntryOf(full, "tee").outputs[1].dropped, 2'000U);
  EXPECT_EQ(EntryOf(full, "tee").outputs[1].waiting, 10'000U);
  EXPECT_EQ(EntryOf(full, "slow").account.received, 0U);
  slow.Inputs()[0]->blockSignals(false);
  ASSERT_TRUE(Settle([this] { ExpectNothingMissing(Now()); }));
  ExpectBalanced(Now());
  EXPECT_EQ(Became("quick", Fate::Counted), 12'000U);
  EXPECT_EQ(Became("slow", Fate::Counted), 10'000U);
  EXPECT_EQ(Total(quick, 1), 12'000);
  EXPECT_EQ(Total(slow, 1), 10'000);
}

// Signals reach every block through the event loop: a main thread that is busy stalls the whole chain.
TEST_F(TheLedgerOfASlowConsumer, hasWhatABusyMainThreadCostsAtTheSource) {
  for (int i = 0; i < 10'500; ++i) {
    digitizer.Offer(test::OneEvent(0, 1));
  }
  source.Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  ASSERT_TRUE(Settle());
  ExpectBalanced(Now());
  EXPECT_EQ(EntryOf(Now(), "source").account.made, 10'500U);
  EXPECT_EQ(EntryOf(Now(), "source").outputs[0].dropped, 500U);
  EXPECT_EQ(Total(quick, 1), 10'000);
}

// source - sorter - dumper
class TheLedgerOfASorter : public test::LedgerFixture {
protected:
  TheLedgerOfASorter() {
    Link(source, sorter);
    Link(sorter, dumper);
    StartRun(dumper, "run_1");
  }

  bool IsSorted(const Ledger& ledger) const override { return LedgerFixture::IsSorted(ledger, mostWaiting); }
  void Offer(int events) {
    test::RawBlock block;
    for (int e = 0; e < events; ++e, ++next) {
      block.Add(test::EnergyRecord(0, 1, next / groupSize * 1000));
    }
    digitizer.Offer(std::move(block));
  }

  Source& source = Add("source", MakeSource());
  Process_Time_Sorting& sorter = Add("sorter", MakeSorter());
  DataDumper& dumper = AddDumper("dumper");
  quint64 next = 0;
  quint64 groupSize = 10;
  quint64 mostWaiting = 0;
};

TEST_F(TheLedgerOfASorter, hasWhatItsFullBufferRefused) {
  for (int block = 0; block < 4; ++block) {
    Offer(5'000);
  }
  source.Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());  // so that it drains all four at once
  mostWaiting = 0;
  ASSERT_TRUE(Settle([this] { ExpectNothingMissing(Now()); }));
  ExpectBalanced(Now());
  EXPECT_EQ(Became("sorter", Fate::DroppedFull), 10'000U);
  EXPECT_EQ(Became("sorter", Fate::Grouped), 10'000U);
  EXPECT_EQ(EntryOf(Now(), "sorter").outputs[0].pushed, 10'000U);
  EXPECT_EQ(Became("dumper", Fate::Written), 10'000U);
  EXPECT_EQ(RecordsIn("run_1/dumper_0.bin"), 10'000U);
}

TEST_F(TheLedgerOfASorter, neverHasAnEventAsWaitingThatIsBehindItAlready) {
  groupSize = 1;
  mostWaiting = 1'000;
  source.Run();
  for (int round = 0; round < 10; ++round) {
    for (int block = 0; block < 8; ++block) {
      Offer(1'000);
    }
    ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());  // so that it drains all at once
    ASSERT_TRUE(Settle([this] {
      const Ledger ledger = Now();
      ExpectNothingMissing(ledger);
      EXPECT_LE(EntryOf(ledger, "dumper").inputs[0].taken, EntryOf(ledger, "sorter").account.fates[Fate::Grouped]);
    }));
  }
}

TEST_F(TheLedgerOfASorter, hasWhatStillWaitsAtTheEnd) {
  Offer(35);
  mostWaiting = 35;
  source.Run();
  ASSERT_TRUE(Settle());
  EXPECT_EQ(EntryOf(Now(), "sorter").account.waiting, 35U) << "nothing has come after them";
  ExpectBalanced(Now());
  Stop();
  ExpectBalanced(Now());
  EXPECT_EQ(EntryOf(Now(), "sorter").account.waiting, 35U);
  EXPECT_EQ(Received("dumper"), 0U);
}

}  // namespace
