#include "recording/RunFile.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

namespace {

using korvax::FileForm;
using Result = korvax::RunFile::Result;

TEST(FileForm, hasTheNumberThatRecordsKnowItBy) {
  EXPECT_EQ(static_cast<quint32>(FileForm::Binary), 0U);
  EXPECT_EQ(static_cast<quint32>(FileForm::Csv), 1U);
  EXPECT_EQ(static_cast<quint32>(FileForm::Json), 2U);
  EXPECT_EQ(static_cast<quint32>(FileForm::Unknown), 3U);
}

TEST(FileForm, isNamedByTheThreeTypesLetterCaseIncluded) {
  EXPECT_EQ(korvax::FileFormOf("BIN"), FileForm::Binary);
  EXPECT_EQ(korvax::FileFormOf("CSV"), FileForm::Csv);
  EXPECT_EQ(korvax::FileFormOf("JSON"), FileForm::Json);
  for (const char* const other : {"", "bin", "Csv", "json", "BIN ", " BIN", "BINARY", "TXT", "0"}) {
    EXPECT_EQ(korvax::FileFormOf(other), FileForm::Unknown) << other;
  }
}

TEST(FileForm, hasAnExtensionUnlessItIsUnknown) {
  EXPECT_EQ(korvax::ExtensionOf(FileForm::Binary), ".bin");
  EXPECT_EQ(korvax::ExtensionOf(FileForm::Csv), ".csv");
  EXPECT_EQ(korvax::ExtensionOf(FileForm::Json), ".json");
  EXPECT_EQ(korvax::ExtensionOf(FileForm::Unknown), "");
}

TEST(RunFileBase, isStorageRootRunIdBlockNameAndIndex) {
  const korvax::DumpSettings settings{.filePath = "/data/storage", .runId = "17"};
  EXPECT_EQ(korvax::RunFileBase(settings, "dumper", 0), "/data/storage/17/dumper_0");
  EXPECT_EQ(korvax::RunFileBase(settings, "list of ch 3", 120), "/data/storage/17/list of ch 3_120");
  EXPECT_EQ(korvax::RunFileBase({}, "dumper", 1), "//dumper_1");
}

class ARunFile : public testing::Test {
protected:
  /// Writes a file of so many records, and ends it.
  void Make(const QString& name, quint64 records) {
    ASSERT_EQ(file.Open(Path(name), FileForm::Csv), Result::Open);
    ASSERT_TRUE(file.Write("bytes", records));
    ASSERT_TRUE(file.Close());
  }
  QString Path(const QString& name = "run.dat") const { return folder.filePath(name); }
  std::string Bytes(const QString& name = "run.dat") const {
    QFile written(Path(name));
    EXPECT_TRUE(written.open(QIODevice::ReadOnly)) << qPrintable(name);
    return written.readAll().toStdString();
  }

  QTemporaryDir folder;
  korvax::RunFile file;
};

TEST_F(ARunFile, isClosedAtFirstAndTakesNothing) {
  EXPECT_FALSE(file.IsOpen());
  EXPECT_FALSE(file.Write("lost"));
  EXPECT_TRUE(file.Close()) << "nothing to end";
  EXPECT_FALSE(file.IsOpen());
}

TEST_F(ARunFile, beginsWithItsHeadOrForJsonWithABracket) {
  struct Row {
    FileForm form;
    const char* head;
    const char* open;
    const char* closed;
  };
  for (const Row& row :
       {Row{FileForm::Binary, "HEAD12", "HEAD12ab", "HEAD12ab"}, Row{FileForm::Csv, "", "ab", "ab"},
        Row{FileForm::Json, "", "[ab", "[ab]"}, Row{FileForm::Json, "HEAD", "[ab", "[ab]"}}) {
    ASSERT_EQ(file.Open(Path(), row.form, row.head), Result::Open);
    EXPECT_TRUE(file.Write("ab"));
    EXPECT_EQ(Bytes(), row.open);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(Bytes(), row.closed);
  }
}

TEST_F(ARunFile, emptiesTheFileThatIsThere) {
  QFile before(Path());
  ASSERT_TRUE(before.open(QIODevice::WriteOnly));
  before.write("something long from before");
  before.close();
  ASSERT_EQ(file.Open(Path(), FileForm::Csv), Result::Open);
  EXPECT_EQ(Bytes(), "");
}

TEST_F(ARunFile, keepsNothingBack) {
  ASSERT_EQ(file.Open(Path(), FileForm::Binary, "KV"), Result::Open);
  EXPECT_EQ(Bytes(), "KV");
  ASSERT_TRUE(file.Write("1"));
  EXPECT_EQ(Bytes(), "KV1");
  EXPECT_EQ(file.Size(), 3);
}

TEST_F(ARunFile, takesBytesOfAnyValue) {
  const std::string all{'\0', '\n', '\r', '\xFF', '\x1A', '\0'};
  ASSERT_EQ(file.Open(Path(), FileForm::Binary), Result::Open);
  EXPECT_TRUE(file.Write(all));
  EXPECT_EQ(Bytes(), all);
}

TEST_F(ARunFile, getsOneBracketHoweverOftenItIsClosed) {
  ASSERT_EQ(file.Open(Path(), FileForm::Json), Result::Open);
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(Bytes(), "[]");
  EXPECT_EQ(file.Path(), Path());
  EXPECT_FALSE(file.Write("lost"));
  EXPECT_EQ(Bytes(), "[]");
}

TEST_F(ARunFile, saysInTheSystemsWordsWhyItDidNotOpen) {
  QDir(folder.path()).mkdir("folder");
  QFile plain(Path("plain"));
  ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
  struct Row {
    const char* path;
    const char* problem;
  };
  for (const Row& row :
       {Row{"missing/run.dat", "No such file or directory"}, Row{"plain/run.dat", "Not a directory"}}) {
    EXPECT_EQ(file.Open(Path(row.path), FileForm::Csv), Result::CannotOpen) << row.path;
    EXPECT_EQ(file.Problem(), row.problem);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Path(), Path(row.path));
  }
  EXPECT_EQ(file.Open(Path("folder"), FileForm::Csv), Result::CannotOpen);
  EXPECT_NE(file.Problem(), "");
  EXPECT_FALSE(file.Write("lost"));
}

TEST_F(ARunFile, isNotOpenWhenItsHeadDoesNotFit) {
  ASSERT_TRUE(QFile::link("/dev/full", Path("full")));
  for (const auto& [form, head] : {std::pair{FileForm::Json, ""}, std::pair{FileForm::Binary, "HEAD"}}) {
    EXPECT_EQ(file.Open(Path("full"), form, head), Result::CannotWrite);
    EXPECT_EQ(file.Problem(), "No space left on device");
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), 0);
    EXPECT_EQ(file.Path(), Path("full"));
  }
  EXPECT_EQ(file.Open(Path("full"), FileForm::Csv), Result::Open) << "nothing to write yet";
  EXPECT_FALSE(file.Write("a"));
}

TEST_F(ARunFile, holdsWhatItHeldBeforeAfterAFailedWrite) {
  ASSERT_EQ(file.Open(Path(), FileForm::Csv), Result::Open);
  ASSERT_TRUE(file.Write("whole"));
  bool written = true;
  {
    const test::FileSizeLimit limit(8);
    written = file.Write("too much");
  }
  EXPECT_FALSE(written);
  EXPECT_EQ(file.Problem(), "File too large");
  EXPECT_EQ(Bytes(), "whole");
  EXPECT_EQ(file.Size(), 5);
}

TEST_F(ARunFile, goesOnWithoutAGapWhenThereIsRoomAgain) {
  ASSERT_EQ(file.Open(Path(), FileForm::Json), Result::Open);
  ASSERT_TRUE(file.Write("1"));
  {
    const test::FileSizeLimit limit(4);
    EXPECT_FALSE(file.Write("2222"));
  }
  EXPECT_TRUE(file.Write("3"));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(Bytes(), "[13]");
}

TEST_F(ARunFile, tellsThatItWasRemoved) {
  ASSERT_EQ(file.Open(Path(), FileForm::Csv), Result::Open);
  ASSERT_TRUE(file.Write("1"));
  ASSERT_TRUE(QFile::remove(Path()));
  EXPECT_FALSE(file.Write("2"));
  EXPECT_EQ(file.Problem(), "the file was removed");
  EXPECT_FALSE(file.Close());
  EXPECT_FALSE(QFile::exists(Path()));
}

TEST_F(ARunFile, tellsWhenItIsClosedThatItWasRemoved) {
  for (const FileForm form : {FileForm::Binary, FileForm::Csv, FileForm::Json}) {
    ASSERT_EQ(file.Open(Path(), form), Result::Open);
    ASSERT_TRUE(QFile::remove(Path()));
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(file.Problem(), "the file was removed");
    EXPECT_EQ(file.Path(), Path());
    EXPECT_FALSE(file.IsOpen());
    EXPECT_TRUE(file.Close()) << "told once";
  }
}

TEST_F(ARunFile, tellsWhenItsBracketFindsNoRoom) {
  ASSERT_EQ(file.Open(Path(), FileForm::Json), Result::Open);
  ASSERT_TRUE(file.Write("1"));
  bool ended = true;
  {
    const test::FileSizeLimit limit(2);
    ended = file.Close();
  }
  EXPECT_FALSE(ended);
  EXPECT_EQ(file.Problem(), "File too large");
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(Bytes(), "[1");
}

TEST_F(ARunFile, thatWasRenamedIsWrittenOn) {
  ASSERT_EQ(file.Open(Path(), FileForm::Csv), Result::Open);
  ASSERT_TRUE(QFile::rename(Path(), Path("renamed")));
  EXPECT_TRUE(file.Write("2"));
  EXPECT_EQ(Bytes("renamed"), "2");
}

TEST_F(ARunFile, worksAfterAFailure) {
  EXPECT_EQ(file.Open(Path("missing/run.dat"), FileForm::Json), Result::CannotOpen);
  ASSERT_EQ(file.Open(Path(), FileForm::Json), Result::Open);
  EXPECT_TRUE(file.Write("1"));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(Bytes(), "[1]");
}

// Qt would cut the text at the NUL, and so empty another file.
TEST_F(ARunFile, doesNotTouchAFileWhoseNameHasANulBehindIt) {
  Make("run.dat", 1);
  for (const QString& rest : {QString(QChar(0)), QChar(0) + QStringLiteral("/7/dumper_0.csv")}) {
    EXPECT_FALSE(korvax::IsPath(Path() + rest));
    EXPECT_EQ(file.Open(Path() + rest, FileForm::Csv), Result::CannotOpen);
    EXPECT_EQ(file.Problem(), "Invalid argument");
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(Bytes(), "bytes");
  }
  EXPECT_TRUE(korvax::IsPath(Path()));
  EXPECT_EQ(file.TakeOverwritten(), 0U);
}

TEST_F(ARunFile, tellsOnceHowManyRecordsItHadWhenItWasEmptied) {
  Make("a", 3);
  EXPECT_EQ(file.TakeOverwritten(), 0U);
  Make("a", 4);
  EXPECT_EQ(file.TakeOverwritten(), 3U);
  EXPECT_EQ(file.TakeOverwritten(), 0U);
  Make("a", 0);
  Make("a", 0);
  EXPECT_EQ(file.TakeOverwritten(), 4U) << "each record once";
}

TEST_F(ARunFile, remembersTheRecordsOfEachPath) {
  Make("a", 1);
  Make("b", 2);
  Make("c", 4);
  EXPECT_EQ(file.TakeOverwritten(), 0U);
  Make("c", 8);
  Make("a", 16);
  EXPECT_EQ(file.TakeOverwritten(), 1U + 4U);
}

TEST_F(ARunFile, addsUpTheRecordsOfItsWritesThatSucceed) {
  ASSERT_EQ(file.Open(Path(), FileForm::Csv), Result::Open);
  ASSERT_TRUE(file.Write("a", 1));
  ASSERT_TRUE(file.Write("b", 2));
  {
    const test::FileSizeLimit limit(2);
    ASSERT_FALSE(file.Write("c", 4));
  }
  ASSERT_TRUE(file.Close());
  ASSERT_EQ(file.Open(Path(), FileForm::Csv), Result::Open);
  EXPECT_EQ(file.TakeOverwritten(), 3U);
}

TEST_F(ARunFile, forgetsTheRecordsOfTheRunBefore) {
  Make("a", 1);
  ASSERT_EQ(file.Open(Path("b"), FileForm::Csv), Result::Open);
  ASSERT_TRUE(file.Write("b", 2));
  file.ForgetRecords();
  ASSERT_TRUE(file.Write("b", 4));
  ASSERT_TRUE(file.Close());
  Make("a", 0);
  EXPECT_EQ(file.TakeOverwritten(), 0U);
  Make("b", 0);
  EXPECT_EQ(file.TakeOverwritten(), 4U) << "the open one begins anew";
}

TEST_F(ARunFile, thatCannotBeOpenedOverwritesNothingYet) {
  Make("a", 3);
  ASSERT_TRUE(QFile::remove(Path("a")));
  ASSERT_TRUE(QDir(folder.path()).mkdir("a"));
  EXPECT_EQ(file.Open(Path("a"), FileForm::Csv), Result::CannotOpen);
  EXPECT_EQ(file.TakeOverwritten(), 0U);
}

TEST_F(ARunFile, thatIsEmptiedButHasNoRoomForItsHeadHasOverwritten) {
  Make("a", 3);
  {
    const test::FileSizeLimit limit(0);
    EXPECT_EQ(file.Open(Path("a"), FileForm::Binary, "HEAD"), Result::CannotWrite);
  }
  EXPECT_EQ(Bytes("a"), "");
  EXPECT_EQ(file.TakeOverwritten(), 3U);
}

}  // namespace
