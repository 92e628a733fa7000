#include "client/FilesCommand.h"

#include "tests/support/Printing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace korvax::client {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

class Files : public testing::Test {
protected:
  using File = std::unique_ptr<std::FILE, CloseFile>;

  QString Path(const QString& name) const { return folder_.filePath(name); }

  QString Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return Path(name);
  }

  static QByteArray Read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
  }

  Ending Run(FilesAction action, const std::vector<QString>& paths, const QString& output = {}) {
    out_.reset(std::tmpfile());
    error_.reset(std::tmpfile());
    Console console(out_.get(), error_.get());
    return RunFiles({action, paths, output}, console);
  }

  QStringList Lines() const { return Text(out_).split(QLatin1Char('\n')); }
  QString Out() const { return Text(out_); }
  QString Errors() const { return Text(error_); }

  QTemporaryDir folder_;

private:
  static QString Text(const File& file) {
    std::rewind(file.get());
    QByteArray text;
    for (int byte = 0; (byte = std::fgetc(file.get())) != EOF;) {
      text.append(static_cast<char>(byte));
    }
    return QString::fromUtf8(text);
  }

  File out_;
  File error_;
};

const QByteArray ListLines = "1000000000,0,11,\n2000000000,5,12,\n3000000000,5,13,\n";

TEST_F(Files, areSummarisedInATableWithABarForEachChannel) {
  const QString path = Write("list_0.csv", ListLines);
  EXPECT_EQ(Run(FilesAction::Summary, {path}).code, ExitCode::Ok);
  EXPECT_EQ(Lines(), (QStringList{path,  //
                                  "  kind      list file, CSV", "  events    3", "  channels  2",
                                  "  time      2 s, from 1000000000 to 3000000000 ns", "  rate      1.5/s",
                                  "  first     timestamp 1000000000 ns, channel 0, energy_raw 11",
                                  "  last      timestamp 3000000000 ns, channel 5, energy_raw 13",
                                  "  channel  events   rate", "        0       1  0.5/s  ████████████████████",
                                  "        5       2  1.0/s  ████████████████████████████████████████",
                                  "  good, 3 records",  //
                                  ""}));
}

TEST_F(Files, ofWavesAndRatesAreSummarised) {
  const QByteArray head("KVXR\0\0\0\0\0\xf1\x53\x65\0\0\0\0", 16);
  const QByteArray record("\xe8\3\0\0\0\0\0\0\0\0\0\0", 12);  // 1000 ms, no channels
  const QString rates = Write("rates_0.bin", head + record);
  const QString waves = Write("waves_0.csv", "1,1,1,0,5,0,0,\n1,1,1,0,7,0,0,\n");
  EXPECT_EQ(Run(FilesAction::Summary, {rates, waves}).code, ExitCode::Ok);
  EXPECT_EQ(Lines(), (QStringList{rates,  //
                                  "  kind      rate file, binary",
                                  "  created   2023-11-14 22:13:20 UTC",
                                  "  records   1",
                                  "  channels  0",
                                  "  time      0 s, from 1000 to 1000 ms",
                                  "  rate      -",
                                  "  first     1000 ms, 0 channels",
                                  "  last      1000 ms, 0 channels",
                                  "  good, 1 record",
                                  waves,
                                  "  kind      wave file, CSV",
                                  "  records   2",
                                  "  channels  1",
                                  "  time      2e-09 s, from 5 to 7 ns",
                                  "  rate      1000000000/s",
                                  "  first     timestamp 5 ns, 1 channel of 1 sample",
                                  "  last      timestamp 7 ns, 1 channel of 1 sample",
                                  "  good, 2 records",  //
                                  ""}));
}

TEST_F(Files, withoutRecordsAreSummarised) {
  const QString path = Write("x_0.json", "[]");
  EXPECT_EQ(Run(FilesAction::Summary, {path}).code, ExitCode::Ok);
  EXPECT_EQ(Lines(), (QStringList{path, "  kind     run file without a record that tells its kind, JSON",
                                  "  records  0", "  good, 0 records", ""}));
}

TEST_F(Files, thatAreDamagedAreSummarisedAsFarAsTheyGo) {
  const QString path = Write("x_0.csv", ListLines + "4000,");
  EXPECT_EQ(Run(FilesAction::Summary, {path}).code, ExitCode::BadFile);
  EXPECT_TRUE(Lines().contains("  events    3"));
  EXPECT_EQ(Lines().at(Lines().size() - 2),
            "  cut off, 5 bytes of an unfinished part from byte 51 on, 3 whole records before");
}

TEST_F(Files, areCheckedInALineEach) {
  const QString good = Write("a.csv", ListLines);
  const QString open = Write("b.json", "[{\"timestamp\":1,\"channel\":2,\"energy_raw\":3}\n");
  const QString bad = Write("c.bin", "KVXT");
  const Ending ending = Run(FilesAction::Check, {good, open, bad, Path("absent.csv")});
  EXPECT_EQ(ending.code, ExitCode::BadFile);
  EXPECT_EQ(ending.text, "3 files or folders are not as they should be.");
  EXPECT_EQ(Lines(),
            (QStringList{good + ": good, 3 records", open + ": not closed, ends at byte 44, 1 whole record before",
                         bad + ": begins otherwise than run files of its name's ending (.bin, .csv, .json), "
                               "see byte 0",
                         Path("absent.csv") + ": can't be opened, or is no file", ""}));
}

TEST_F(Files, thatAreAllGoodEndWithCode0) {
  const Ending ending = Run(FilesAction::Check, {Write("a.csv", ListLines), Write("b.csv", "")});
  EXPECT_EQ(ending.code, ExitCode::Ok);
  EXPECT_EQ(ending.text, "");
  EXPECT_EQ(Errors(), "");
}

TEST_F(Files, ofAFolderStandInNaturalOrderWithoutStatistics) {
  for (const char* name : {"x_10.csv", "x_2.csv", "x_0.csv", "a_1.json", "x_2.stat", "notes.txt"}) {
    Write(name, QString(name).endsWith("json") ? "[]" : ListLines);
  }
  QDir(folder_.path()).mkdir("folder.csv");
  EXPECT_EQ(Run(FilesAction::Check, {folder_.path()}).code, ExitCode::Ok);
  EXPECT_EQ(Lines(),
            (QStringList{Path("a_1.json") + ": good, 0 records", Path("x_0.csv") + ": good, 3 records",
                         Path("x_2.csv") + ": good, 3 records", Path("x_10.csv") + ": good, 3 records", ""}));
}

TEST_F(Files, areMissedInAFolderWithoutAny) {
  const Ending ending = Run(FilesAction::Check, {folder_.path()});
  EXPECT_EQ(ending.code, ExitCode::BadFile);
  EXPECT_EQ(ending.text, "1 file or folder is not as it should be.");
  EXPECT_EQ(Errors(), "korvaxctl: " + folder_.path() + ": a folder without run files\n");
}

TEST_F(Files, areWrittenAsCsvToStandardOutput) {
  const QString path = Write("x_0.json", "[{\"timestamp\":1,\"channel\":2,\"energy_raw\":3}\n]");
  EXPECT_EQ(Run(FilesAction::Csv, {path}).code, ExitCode::Ok);
  EXPECT_EQ(Out(), "1,2,3,\n");
}

TEST_F(Files, areWrittenAsCsvToANewFileOneAfterTheOther) {
  Write("x_10.csv", "3,0,0,\n");
  Write("x_9.csv", "1,0,0,\n2,0,0,\n");
  QTemporaryDir elsewhere;
  const QString output = elsewhere.filePath("all.csv");
  EXPECT_EQ(Run(FilesAction::Csv, {folder_.path()}, output).code, ExitCode::Ok);
  EXPECT_EQ(Read(output), "1,0,0,\n2,0,0,\n3,0,0,\n");
  EXPECT_EQ(Out(), "");
}

TEST_F(Files, ofRatesHaveOneHeadAsCsv) {
  const QString path = Write("r_0.json",
                             "[,{\"timestamp\":7,\"rate_in\":[1.5],\"rate_out\":[2.5],"
                             "\"counts_in\":[3],\"counts_out\":[4]}]");
  EXPECT_EQ(Run(FilesAction::Csv, {path, path}).code, ExitCode::Ok);
  EXPECT_TRUE(Lines().at(0).startsWith("timestamp,rate_in_ch0,"));
  EXPECT_EQ(Lines().mid(1), (QStringList{"7,1.5,3,", "7,1.5,3,", ""}));
}

TEST_F(Files, areNeverOverwritten) {
  const QString path = Write("x_0.csv", ListLines);
  const QString taken = Write("taken", "precious");
  const Ending ending = Run(FilesAction::Csv, {path}, taken);
  EXPECT_EQ(ending.code, ExitCode::OutputFailed);
  EXPECT_TRUE(ending.text.startsWith(taken + " can't be created: ")) << qPrintable(ending.text);
  EXPECT_EQ(Read(taken), "precious");
}

TEST_F(Files, areNotWrittenIntoAFolderThatIsNotThere) {
  const QString path = Write("x_0.csv", ListLines);
  EXPECT_EQ(Run(FilesAction::Csv, {path}, Path("absent/x.csv")).code, ExitCode::OutputFailed);
}

TEST_F(Files, thatAreDamagedAreWrittenAsFarAsTheyGo) {
  const QString path = Write("x_0.csv", ListLines + "4000,");
  const QString output = Path("out");
  EXPECT_EQ(Run(FilesAction::Csv, {path}, output).code, ExitCode::BadFile);
  EXPECT_EQ(Read(output), ListLines);
  EXPECT_EQ(Errors(), "korvaxctl: " + path +
                          ": cut off, 5 bytes of an unfinished part from byte 51 on, 3 whole records before\n");
}

TEST_F(Files, thatAreNoneLeaveNoOutput) {
  const QString path = Write("x_0.bin", "nothing");
  EXPECT_EQ(Run(FilesAction::Csv, {path}, Path("out")).code, ExitCode::BadFile);
  EXPECT_FALSE(QFile::exists(Path("out")));
}

TEST_F(Files, ofDifferentKindsAreNotMixed) {
  const QString list = Write("x_0.csv", ListLines);
  const QString waves = Write("w_0.csv", "1,1,1,0,5,0,0,\n");
  EXPECT_EQ(Run(FilesAction::Csv, {list, waves}, Path("out")).code, ExitCode::Usage);
  EXPECT_FALSE(QFile::exists(Path("out")));
}

TEST_F(Files, namesAreHarmlessToATerminal) {
  const QString path = Path(QStringLiteral("\x1b[31m.csv"));
  Run(FilesAction::Check, {path});
  EXPECT_FALSE(Out().contains(QLatin1Char('\x1b')));
}

}  // namespace
}  // namespace korvax::client
