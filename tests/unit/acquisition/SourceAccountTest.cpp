#include "tests/unit/acquisition/SourceFixture.h"

#include <limits>

namespace {

using korvax::Account;
using korvax::Fate;

struct Expected {
  quint64 decoded = 0;
  quint64 passedOver = 0;
  quint64 refused = 0;
  quint64 made = 0;
};

test::Bytes PairRecord() {
  return test::Bytes()
      .Unused(16)
      .U64(1)
      .U32(3)
      .U32(5)
      .U32(9)
      .Unused(4)
      .F64(0.0)
      .F64(0.0)
      .Unused(8)
      .U8(0)
      .U8(0)
      .Unused(2)
      .U32(0);
}

test::Bytes RateRecord(quint32 channels) {
  return test::Bytes().U32(channels).Unused(4).Pointer(nullptr).Pointer(nullptr).Pointer(nullptr).Pointer(nullptr);
}

// A group of waves; its data, when there are any, have no samples of their own.
test::Bytes GroupRecord(qint32 samples, qint32 waves, const void* data) {
  return test::Bytes().U64(7).U32(0).Unused(4).I32(samples).U32(0).U32(0).I32(waves).Pointer(data);
}

class ASourcesAccount : public SourceFixture {
protected:
  // Reads the blocks to their end.
  Account::Statement AccountOf(const char* dataType, const std::vector<const test::RawBlock*>& blocks) {
    for (const test::RawBlock* const block : blocks) {
      Feed(*block);
    }
    const Source& source = MakeRunning(dataType);
    EXPECT_TRUE(WaitForReads(static_cast<int>(blocks.size()) + 1));
    return source.Records()->Get();
  }
  static void Expect(const Account::Statement& statement, const Expected& expected) {
    EXPECT_EQ(statement.fates[Fate::Decoded], expected.decoded);
    EXPECT_EQ(statement.fates[Fate::PassedOver], expected.passedOver);
    EXPECT_EQ(statement.fates[Fate::Refused], expected.refused);
    EXPECT_EQ(statement.received, expected.decoded + expected.passedOver + expected.refused);
    EXPECT_EQ(statement.fates.Sum(), statement.received) << "an entry has another fate";
    EXPECT_EQ(statement.waiting, 0U);
    EXPECT_EQ(statement.made, expected.made);
  }
};

TEST_F(ASourcesAccount, namesItsFates) {
  EXPECT_EQ(Make(Configuration("energy", "endpoints\\energy")).Records()->PossibleFates(),
            (std::vector{Fate::Decoded, Fate::PassedOver, Fate::Refused}));
}

TEST_F(ASourcesAccount, isNoneWithoutABoard) {
  EXPECT_EQ(Make(Configuration("energy", "endpoints\\energy", "no such board")).Records(), nullptr);
}

TEST_F(ASourcesAccount, hasEntriesWithoutARecordAsPassedOver) {
  test::RawBlock mixed;
  mixed.Add(EnergyRecord(5, 1, 100)).AddPointer(nullptr).Add(EnergyRecord(6, 2, 200)).AddPointer(nullptr);
  test::RawBlock empty;
  empty.AddPointer(nullptr);
  Expect(AccountOf("energy", {&mixed, &empty, &mixed}), {.decoded = 4, .passedOver = 5, .made = 4});
}

TEST_F(ASourcesAccount, hasAPairAsOneEntryThatMakesTwoEvents) {
  test::RawBlock block;
  block.Add(PairRecord()).AddPointer(nullptr).Add(PairRecord());
  Expect(AccountOf("energy_pair", {&block}), {.decoded = 2, .passedOver = 1, .made = 4});
}

TEST_F(ASourcesAccount, hasEntriesOfAnUnknownTypeAsPassedOver) {
  test::RawBlock block;
  block.Add(EnergyRecord(5, 1, 100)).Add(EnergyRecord(6, 2, 200));
  Expect(AccountOf("Energy", {&block}), {.passedOver = 2});
}

TEST_F(ASourcesAccount, hasRatesOfNoChannelsOrTooManyAsPassedOver) {
  test::RawBlock block;
  block.Add(RateRecord(1)).Add(RateRecord(0)).Add(RateRecord(65'537)).AddPointer(nullptr).Add(RateRecord(65'536));
  Expect(AccountOf("rate_counters", {&block}), {.decoded = 2, .passedOver = 3, .made = 2});
}

TEST_F(ASourcesAccount, hasWaveGroupsThatCanNotBeTrueAsPassedOver) {
  const test::Bytes data = test::Bytes().U64(0).U64(0).U64(0).Pointer(nullptr).Pointer(nullptr);
  test::RawBlock block;
  block
      .Add(GroupRecord(4, 2, data.Data()))  // good
      .Add(GroupRecord(-1, 2, data.Data()))
      .Add(GroupRecord(4, -1, data.Data()))
      .Add(GroupRecord(4, 65'537, data.Data()))
      .Add(GroupRecord(4, 2, nullptr))
      .Add(GroupRecord(67'108'865, 1, data.Data()))
      .AddPointer(nullptr);
  Expect(AccountOf("waveform", {&block}), {.decoded = 1, .passedOver = 6, .made = 1});
}

TEST_F(ASourcesAccount, hasAGroupWithoutWavesAsDecoded) {
  test::RawBlock block;
  block.Add(GroupRecord(4, 0, nullptr));
  Expect(AccountOf("waveform", {&block}), {.decoded = 1, .made = 1});
}

TEST_F(ASourcesAccount, hasBlocksWhoseNumbersCanNotBeTrueAsRefused) {
  reads_.Next([](void* holder) {  // no entries
    test::RawBlock().FillHolder(holder, 5);
    std::memset(holder, 0, sizeof(void*));
    return 0;
  });
  test::RawBlock block;
  block.Add(EnergyRecord(5, 1, 100));
  reads_.Next([&block](void* holder) {  // more than there can be
    block.FillHolder(holder, 16'777'217);
    return 0;
  });
  Feed(block);
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(4));
  Expect(source_->Records()->Get(), {.decoded = 1, .refused = 5 + 16'777'217, .made = 1});
  const QStringList told = log_.Lines().filter("which can't be");
  ASSERT_EQ(told.size(), 1) << "one line, whatever comes";
  EXPECT_TRUE(told[0].contains("the board's library gave 5 entries")) << told[0].toStdString();
}

TEST_F(ASourcesAccount, hasNothingOfReadsThatFindNothingOrFail) {
  test::RawBlock block;
  block.Add(EnergyRecord(5, 1, 100));
  reads_.Next([](void*) { return -11; });
  reads_.Next([&block](void* holder) {  // an error with entries
    block.FillHolder(holder);
    return 5;
  });
  for (const qint32 count : {0, -1, std::numeric_limits<qint32>::min()}) {
    reads_.Next([&block, count](void* holder) {
      block.FillHolder(holder, count);
      return 0;
    });
  }
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(6));
  Expect(source_->Records()->Get(), {});
}

TEST_F(ASourcesAccount, countsWhatItMadeThoughTheQueueRefusedIt) {
  test::RawBlock block;
  block.Add(EnergyRecord(5, 1, 100)).Add(EnergyRecord(6, 2, 200));
  for (int i = 0; i < 10'003; ++i) {
    Feed(block);
  }
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(10'004));
  Expect(source_->Records()->Get(), {.decoded = 20'006, .made = 20'006});
  const PinCounts counts = source_->Outputs().front()->Counts();
  EXPECT_EQ(counts.pushed, 20'000U);
  EXPECT_EQ(counts.dropped, 6U);
}

}  // namespace
