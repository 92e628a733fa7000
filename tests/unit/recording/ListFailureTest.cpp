#include "tests/support/FileSizeLimit.h"
#include "tests/unit/recording/ListFixture.h"

namespace {

using korvax::DumpStatus;

class ListFailure : public test::ListFixture {
protected:
  /// A later run to a good folder works.
  void ExpectAGoodRun() {
    log.Clear();
    SetType("CSV");
    control.Set([this](Settings& settings) { settings.filePath = folder.path(); });
    StartRun("good");
    TakeOneByOne(8, 9);
    EXPECT_EQ(Status(), DumpStatus::Recording);
    EXPECT_EQ(Bytes("good/dumper_0.csv"), "8,0,0,\n9,0,0,\n");
    EXPECT_EQ(Counts().recorded, 2U);
    EXPECT_EQ(Counts().failed, 0U);
    EXPECT_EQ(log.Lines(), QStringList());
  }
};

TEST_F(ListFailure, ofAnUnknownTypeNamesTheFileWithoutAnExtension) {
  for (const char* const type : {"", "bin", "TXT"}) {
    SetType(type);
    log.Clear();
    StartRun("7");
    TakeOneByOne(1, 5);
    EXPECT_EQ(log.Lines(), QStringList(OpenFailure("7/dumper_0", "Invalid argument")));
    EXPECT_EQ(Status(), DumpStatus::Stopped);
    EXPECT_EQ(Files(), QStringList());
    EXPECT_EQ(Counts().failed, 5U);
  }
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofAMissingFolderStopsRecordingWithOneLine) {
  for (const auto& [type, file] :
       {std::pair{"BIN", "missing/dumper_0.bin"}, std::pair{"CSV", "missing/dumper_0.csv"},
        std::pair{"JSON", "missing/dumper_0.json"}}) {
    SetType(type);
    log.Clear();
    control.StartRun("missing");
    TakeTogether(1, 3);
    TakeOneByOne(4, 5);
    EXPECT_EQ(log.Lines(), QStringList(OpenFailure(file, "No such file or directory")));
    EXPECT_EQ(Status(), DumpStatus::Stopped);
    EXPECT_EQ(Counts().failed, 5U);
    EXPECT_EQ(Counts().recorded, 0U);
    EXPECT_EQ(statistics.storedEvents, 0U);
  }
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofAFolderInTheFilesPlaceStopsRecording) {
  StartRun("7");
  MakeFolder("7/dumper_0.csv");
  Take(test::Event(1));
  ASSERT_EQ(log.Lines().size(), 1);
  EXPECT_TRUE(log.Lines()[0].startsWith("Unable to open file  \"" + PathOf("7/dumper_0.csv") + "\"  errno:  \""));
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  ExpectAGoodRun();
}

TEST_F(ListFailure, isFollowedByANewTryWithEveryNewStart) {
  control.StartRun("late");
  Take(test::Event(1));
  EXPECT_EQ(log.Lines().size(), 1);
  MakeFolder("late");
  control.SetStatus(DumpStatus::Recording);
  Take(test::Event(2));
  EXPECT_EQ(Bytes("late/dumper_0.csv"), "2,0,0,\n");
  EXPECT_EQ(Counts().failed, 1U);
  EXPECT_EQ(Counts().recorded, 1U);
}

TEST_F(ListFailure, ofADiskThatIsFullFromTheBeginning) {
  StartRun("7");
  ASSERT_TRUE(QFile::link("/dev/full", PathOf("7/dumper_0.csv")));
  TakeTogether(1, 3);
  TakeOneByOne(4, 9);
  EXPECT_EQ(log.Lines(), QStringList(WriteFailure("7/dumper_0.csv", 0, "No space left on device")));
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  EXPECT_EQ(Counts().recorded, 0U);
  EXPECT_EQ(Counts().failed, 9U);
  EXPECT_EQ(statistics.storedEvents, 0U);
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofADiskWithoutRoomForTheHead) {
  for (const auto& [type, file] : {std::pair{"BIN", "7/dumper_0.bin"}, std::pair{"JSON", "7/dumper_0.json"}}) {
    SetType(type);
    log.Clear();
    StartRun("7");
    ASSERT_TRUE(QFile::link("/dev/full", PathOf(file)));
    TakeOneByOne(1, 3);
    EXPECT_EQ(log.Lines(), QStringList(OpenFailure(file, "No space left on device")));
    EXPECT_EQ(Status(), DumpStatus::Stopped);
    EXPECT_EQ(Counts().failed, 3U);
  }
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofADiskThatFillsUpLeavesWholeContainers) {
  StartRun("7");
  {
    const test::FileSizeLimit limit(40);
    TakeTogether(1, 3);
    TakeTogether(4, 6);
    TakeTogether(7, 9);
  }
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "1,0,0,\n2,0,0,\n3,0,0,\n");
  EXPECT_EQ(log.Lines(), QStringList(WriteFailure("7/dumper_0.csv", 21, "File too large")));
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  EXPECT_EQ(Counts().recorded, 3U);
  EXPECT_EQ(Counts().failed, 6U);
  EXPECT_EQ(statistics.storedEvents, 3U);
  EXPECT_EQ(statistics.usedSpace, 21);
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofADiskThatFillsUpStillClosesAJsonFile) {
  SetType("JSON");
  StartRun("7");
  {
    const test::FileSizeLimit limit(60);
    Take(test::Event(1));
    Take(test::Event(2));
    EXPECT_EQ(Status(), DumpStatus::Stopped);
    Take(test::Event(3));
  }
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n]");
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofADiskWithoutRoomForTheBracketTellsOfTheWriteOnly) {
  SetType("JSON");
  StartRun("7");
  {
    const test::FileSizeLimit limit(44);
    Take(test::Event(1));
    Take(test::Event(2));
    Take(test::Event(3));
  }
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n");
  EXPECT_EQ(log.Lines(), QStringList(WriteFailure("7/dumper_0.json", 44, "File too large")));
  ExpectAGoodRun();
}

TEST_F(ListFailure, closesTheFileAtOnce) {
  SetType("JSON");
  SetEventsPerFile(0);
  StartRun("7");
  TakeOneByOne(1, 3);
  {
    const test::FileSizeLimit limit(45);
    Take(test::Event(4), test::Event(5));
  }
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  EXPECT_EQ(Bytes("7/dumper_1.json"), "[{\"timestamp\":3,\"channel\":0,\"energy_raw\":0}\n]");
  EXPECT_EQ(Bytes("7/dumper_2.json"), "[]");
}

TEST_F(ListFailure, isFollowedByTheFirstFileAnewWhenRecordingGoesOn) {
  SetEventsPerFile(1);
  StartRun("7");
  TakeOneByOne(1, 5);
  {
    const test::FileSizeLimit limit(7);
    Take(test::Event(6));
  }
  ASSERT_EQ(Bytes("7/dumper_1.csv"), "5,0,0,\n");
  log.Clear();
  Restart();
  TakeOneByOne(7, 8);
  EXPECT_EQ(Bytes("7/dumper_0.csv"), "7,0,0,\n8,0,0,\n");
  EXPECT_EQ(Bytes("7/dumper_1.csv"), "5,0,0,\n");
  EXPECT_EQ(log.Lines(), QStringList(Reuse("7/dumper_0.csv", 2)));
  EXPECT_EQ(Counts().recorded, 7U);
  EXPECT_EQ(Counts().overwritten, 2U + 2U) << "those of the first rollover, and these";
  EXPECT_EQ(Counts().failed, 1U);
}

TEST_F(ListFailure, isCountedUntilTheNextStop) {
  control.StartRun("missing");
  TakeOneByOne(1, 3);
  EXPECT_EQ(Counts().failed, 3U);
  Stop();
  TakeOneByOne(4, 6);
  EXPECT_EQ(Counts().failed, 3U);
  EXPECT_EQ(Counts().discarded, 0U);
}

TEST_F(ListFailure, ofAFileThatCannotBeEndedHasALineAtTheStop) {
  for (const auto& [type, file] : {std::pair{"BIN", "7/dumper_0.bin"}, std::pair{"JSON", "7/dumper_0.json"}}) {
    SetType(type);
    StartRun("7");
    Take(test::Event(1));
    ASSERT_TRUE(QFile::remove(PathOf(file)));
    Stop();
    log.Clear();
    TakeOneByOne(2, 3);
    EXPECT_EQ(log.Lines(), QStringList(EndFailure(file, "the file was removed")));
    EXPECT_EQ(Counts().recorded, 1U);
  }
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofABracketWithoutRoomHasALineAtTheStop) {
  SetType("JSON");
  StartRun("7");
  Take(test::Event(1));
  Stop();
  {
    const test::FileSizeLimit limit(44);
    Take(test::Event(2));
  }
  EXPECT_EQ(log.Lines(), QStringList(EndFailure("7/dumper_0.json", "File too large")));
  EXPECT_EQ(Bytes("7/dumper_0.json"), "[{\"timestamp\":1,\"channel\":0,\"energy_raw\":0}\n");
  ExpectAGoodRun();
}

// Qt would cut the text at the NUL, and so empty another file.
TEST_F(ListFailure, ofAPathWithANulLeavesTheFileWhoseNameStandsBeforeIt) {
  QFile other(PathOf("other"));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.write("precious");
  other.close();
  const std::pair<QString, QString> rows[] = {{PathOf("other") + QChar(0), "7"},
                                              {folder.path(), "other" + QString(QChar(0))}};
  for (const auto& [path, runId] : rows) {
    log.Clear();
    control.StartRun([&storage = path, &id = runId](Settings& settings) {
      settings.filePath = storage;
      settings.runId = id;
    });
    TakeOneByOne(1, 2);
    ASSERT_EQ(log.Lines().size(), 1);
    EXPECT_TRUE(log.Lines()[0].contains("errno:  \"Invalid argument\" . ")) << qPrintable(log.Lines()[0]);
    EXPECT_EQ(Bytes("other"), "precious");
    EXPECT_EQ(Counts().failed, 2U);
  }
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofADiskThatFillsUpLeavesWholeRecordsInBinaryForm) {
  SetType("BIN");
  StartRun("7");
  {
    const test::FileSizeLimit limit(14 + 4 * 25 + 7);
    TakeTogether(1, 2);
    TakeTogether(3, 5);
  }
  EXPECT_EQ(Bytes("7/dumper_0.bin").size(), 14U + 2 * 25);
  EXPECT_EQ(log.Lines(), QStringList(WriteFailure("7/dumper_0.bin", 64, "File too large")));
}

TEST_F(ListFailure, ofAFileThatWasRemovedStopsRecordingWithOneLine) {
  StartRun("7");
  Take(test::Event(1));
  ASSERT_TRUE(QFile::remove(PathOf("7/dumper_0.csv")));
  TakeOneByOne(2, 9);
  ASSERT_EQ(log.Lines().size(), 1);
  EXPECT_TRUE(log.Lines()[0].startsWith("Unable to write file \"" + PathOf("7/dumper_0.csv") + "\" at byte "));
  EXPECT_TRUE(log.Lines()[0].contains("\"the file was removed\""));
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  EXPECT_EQ(Counts().recorded, 1U);
  EXPECT_EQ(Counts().failed, 8U);
  EXPECT_EQ(Files(), QStringList());
  ExpectAGoodRun();
}

TEST_F(ListFailure, ofAFolderThatWasRemovedStopsRecording) {
  StartRun("7");
  Take(test::Event(1));
  ASSERT_TRUE(QDir(PathOf("7")).removeRecursively());
  TakeOneByOne(2, 9);
  EXPECT_EQ(log.Lines().size(), 1);
  EXPECT_EQ(Status(), DumpStatus::Stopped);
  ExpectAGoodRun();
}

TEST_F(ListFailure, inAContainerOfTheRunBeforeDoesNotStopTheNewOne) {
  StartRun("7");
  Take(test::Event(1));
  Take(test::Event(2), test::Acting([this] {
         QFile::remove(PathOf("7/dumper_0.csv"));
         Stop();
         StartRun("8");
       }));
  EXPECT_EQ(Status(), DumpStatus::Recording);
  EXPECT_EQ(Counts().failed, 0U);
  Take(test::Event(3));
  EXPECT_EQ(Bytes("8/dumper_0.csv"), "3,0,0,\n");
  EXPECT_EQ(Counts().recorded, 1U);
}

TEST_F(ListFailure, endsAPauseThatWasOrderedMeanwhile) {
  StartRun("7");
  Take(test::Event(1), test::Acting([this] {
         QFile::remove(PathOf("7/dumper_0.csv"));
         Pause();
       }));
  EXPECT_EQ(Status(), DumpStatus::Stopped);
}

}  // namespace
