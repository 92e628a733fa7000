#include "tests/chain/LedgerFixture.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/SmallFileSystem.h"

#include <map>

namespace {

using korvax::Fate;

// source - tee - good, bad: two dumpers, of which one meets with trouble
class TheLedgerOfRecorders : public test::LedgerFixture {
protected:
  // With a disk of so many bytes below the folder of the one, if any.
  explicit TheLedgerOfRecorders(qint64 diskBytes = 0) : disk(MakeDisk(diskBytes)) {
    Link(source, tee);
    LinkOutput(tee, 0, good);
    LinkOutput(tee, 1, bad);
    StartRun(good, "good");
    StartRun(bad, "bad");
    source.Run();
  }

  std::unique_ptr<test::SmallFileSystem> MakeDisk(qint64 bytes) {
    folder.Make("good");
    folder.Make("bad");
    return bytes == 0 ? nullptr : std::make_unique<test::SmallFileSystem>(folder.Path("bad"), bytes);
  }

  // Events, one a message, and all that becomes of them.
  void Pass(int events) {
    for (int e = 0; e < events; ++e) {
      digitizer.Offer(test::OneEvent(0, 1));
    }
    passed += static_cast<quint64>(events);
    ASSERT_TRUE(Settle([this] { ExpectNothingMissing(Now()); }));
  }
  // Of each fate so many, and of no other.
  void Expect(const char* dumper, const std::map<Fate, quint64>& expected) const {
    const Ledger ledger = Now();
    ExpectBalanced(ledger);
    quint64 sum = 0;
    for (const auto& [fate, records] : expected) {
      EXPECT_EQ(EntryOf(ledger, dumper).account.fates[fate], records) << korvax::NameOf(fate);
      sum += records;
    }
    EXPECT_EQ(sum, passed);
    EXPECT_EQ(EntryOf(ledger, dumper).account.received, passed);
  }

  const std::unique_ptr<test::SmallFileSystem> disk;  // threads that run already wouldn't see it
  Source& source = Add("source", MakeSource());
  Process_Tee& tee = Add("tee", MakeTee(2));
  DataDumper& good = AddDumper("good");
  DataDumper& bad = AddDumper("bad");
  quint64 passed = 0;
};

TEST_F(TheLedgerOfRecorders, agreesWithTheFileThroughPausesStopsAndStarts) {
  Pass(10);
  good.PauseDump();
  Pass(5);
  good.ReStartDump();
  Pass(7);
  Expect("good", {{Fate::Written, 17}, {Fate::WhilePaused, 5}});
  EXPECT_EQ(RecordsIn("good/good_0.bin"), 17U);
  good.StopDump();
  Pass(3);
  Expect("good", {{Fate::Written, 17}, {Fate::WhilePaused, 5}, {Fate::WhileStopped, 3}});
  StartRun(good, "run_1");
  Pass(4);
  Expect("good", {{Fate::Written, 21}, {Fate::WhilePaused, 5}, {Fate::WhileStopped, 3}});
  EXPECT_EQ(RecordsIn("run_1/good_0.bin"), 4U);
  Expect("bad", {{Fate::Written, 29}});
  EXPECT_EQ(RecordsIn("bad/bad_0.bin"), 29U);
}

TEST_F(TheLedgerOfRecorders, hasTheRecordsOfAFileThatIsBegunAnewAsOverwritten) {
  Pass(10);
  good.StopDump();
  Pass(1);
  good.ReStartDump();
  Pass(6);
  Expect("good", {{Fate::Written, 6}, {Fate::Overwritten, 10}, {Fate::WhileStopped, 1}});
  EXPECT_EQ(RecordsIn("good/good_0.bin"), 6U);
}

class TheLedgerOfAFullDisk : public TheLedgerOfRecorders {
protected:
  TheLedgerOfAFullDisk() : TheLedgerOfRecorders(8'192) {}
};

TEST_F(TheLedgerOfAFullDisk, hasWhatItRefusedAndAllUntilTheNextStart) {
  ASSERT_TRUE(disk->IsMounted());
  Pass(500);
  const quint64 written = RecordsIn("bad/bad_0.bin");
  EXPECT_GT(written, 100U);
  EXPECT_LT(written, 500U);
  Expect("bad", {{Fate::Written, written}, {Fate::NotWritten, 500 - written}});
  Pass(3);
  Expect("bad", {{Fate::Written, written}, {Fate::NotWritten, 503 - written}});
  StartRun(bad, "run_1");
  Pass(4);
  Expect("bad", {{Fate::Written, written + 4}, {Fate::NotWritten, 503 - written}});
  EXPECT_EQ(RecordsIn("run_1/bad_0.bin"), 4U);
  bad.StopDump();
  Pass(1);
  Expect("bad", {{Fate::Written, written + 4}, {Fate::NotWritten, 503 - written}, {Fate::WhileStopped, 1}});
  Expect("good", {{Fate::Written, 508}});
}

TEST_F(TheLedgerOfRecorders, hasWhatALimitOfTheFileSizeRefused) {
  Pass(10);
  good.StopDump();
  Pass(1);
  {
    const test::FileSizeLimit limit(20 * 25);
    Pass(30);
  }
  const quint64 inFile = RecordsIn("bad/bad_0.bin");
  EXPECT_EQ(inFile, 19U) << "of 25 bytes, after the head";
  Expect("bad", {{Fate::Written, inFile}, {Fate::NotWritten, 41 - inFile}});
}

TEST_F(TheLedgerOfRecorders, hasWhatCameAfterTheFolderHadVanishedAsNotWritten) {
  Pass(10);
  ASSERT_TRUE(QDir(folder.Path("bad")).removeRecursively());
  Pass(20);
  Expect("bad", {{Fate::Written, 10}, {Fate::NotWritten, 20}});
  Expect("good", {{Fate::Written, 30}});
  EXPECT_EQ(RecordsIn("good/good_0.bin"), 30U);
  bad.PauseDump();
  Pass(2);
  Expect("bad", {{Fate::Written, 10}, {Fate::NotWritten, 20}, {Fate::WhilePaused, 2}});
  bad.ReStartDump();
  Pass(2);  // to a folder that is still missing
  Expect("bad", {{Fate::Written, 10}, {Fate::NotWritten, 22}, {Fate::WhilePaused, 2}});
}

}  // namespace
