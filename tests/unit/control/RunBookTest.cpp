#include "control/RunBook.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/RunFolder.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/control/Station.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QProcess>

namespace {

using korvax::Fate;
using korvax::RunBook;

qint64 SecondsNow() {
  return QDateTime::currentSecsSinceEpoch();
}

qint64 SecondsOf(const QJsonObject& line) {
  return QDateTime::fromString(line["time"].toString(), Qt::ISODate).toSecsSinceEpoch();
}

class ARunBook : public testing::Test {
protected:
  ARunBook() {
    auto station = std::make_unique<Station>("sink", 1, 0, std::vector{Fate::Counted});
    sink = station.get();
    blocks.push_back(std::move(station));
    WriteConfiguration("{\"storage\": {}}\n");
  }

  void WriteConfiguration(const QByteArray& text) const {
    QFile file(ConfigurationPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
  }
  QString ConfigurationPath() const { return folder.Path("configuration.json"); }

  void Begin(const QString& run = "run_1") { book->Begin(folder.Path(run), run, ConfigurationPath()); }
  void CountSome(quint64 records) { sink->Book(records, Fate::Counted, records); }

  QList<QJsonObject> Lines(const QString& run = "run_1") const {
    QList<QJsonObject> lines;
    QByteArray text = QByteArray::fromStdString(folder.Bytes(run + "/run.summary"));
    EXPECT_TRUE(text.endsWith('\n'));
    text.chop(1);
    for (const QByteArray& line : text.split('\n')) {
      lines << test::Object(line);
    }
    return lines;
  }
  QStringList Events(const QString& run = "run_1") const {
    QStringList events;
    for (const QJsonObject& line : Lines(run)) {
      events << line["event"].toString();
    }
    return events;
  }
  bool WaitForEvents(const QStringList& events) const {
    return test::WaitFor([&] { return Events() == events; });
  }
  // What the ledger of a stop line says of the sink.
  static int CountedIn(const QJsonObject& stop) {
    return stop["ledger"].toObject()["blocks"].toArray()[0].toObject()["became"].toObject()["counted"].toInt();
  }

  test::LogCapture log;
  test::RunFolder folder;
  BlockList blocks;
  Station* sink = nullptr;
  bool hasOpenFiles = false;
  std::unique_ptr<RunBook> book = std::make_unique<RunBook>(blocks, [this] { return hasOpenFiles; });
};

TEST_F(ARunBook, beginsWithALineOfWhatTheRunIsTakenWith) {
  const qint64 before = SecondsNow();
  Begin();
  const qint64 after = SecondsNow();
  const QList<QJsonObject> lines = Lines();
  ASSERT_EQ(lines.size(), 1);
  EXPECT_EQ(lines[0].keys(),
            QStringList({"configuration", "configuration_sha256", "event", "qt", "run_id", "server", "time"}));
  EXPECT_EQ(lines[0]["event"], "start");
  EXPECT_EQ(lines[0]["run_id"], "run_1");
  EXPECT_EQ(lines[0]["configuration"], ConfigurationPath());
  EXPECT_EQ(lines[0]["server"], QCoreApplication::applicationVersion());
  EXPECT_EQ(lines[0]["qt"], qVersion());
  EXPECT_TRUE(lines[0]["time"].toString().endsWith('Z'));
  EXPECT_GE(SecondsOf(lines[0]), before);
  EXPECT_LE(SecondsOf(lines[0]), after);
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(ARunBook, writesTheDigestOfTheConfigurationAsItStandsThen) {
  WriteConfiguration("abc");  // the standard's own example
  Begin();
  EXPECT_EQ(Lines()[0]["configuration_sha256"],
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  WriteConfiguration("");
  folder.Make("run_2");
  Begin("run_2");
  EXPECT_EQ(Lines("run_2")[0]["configuration_sha256"],
            "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST_F(ARunBook, writesTheDigestThatSha256sumPrints) {
  QByteArray text("{\"storage\": {}, \"long\": \"");
  text += QByteArray(300'000, 'x') + "\"}\n";
  WriteConfiguration(text);
  QProcess sum;
  sum.start("sha256sum", {ConfigurationPath()});
  ASSERT_TRUE(sum.waitForFinished());
  Begin();
  EXPECT_EQ(Lines()[0]["configuration_sha256"].toString(),
            QString(sum.readAllStandardOutput()).section(' ', 0, 0));
}

TEST_F(ARunBook, hasNoDigestOfAConfigurationThatIsGone) {
  QFile::remove(ConfigurationPath());
  Begin();
  EXPECT_EQ(Lines()[0]["configuration_sha256"], "");
  EXPECT_EQ(Lines()[0]["event"], "start");
}

TEST_F(ARunBook, notesPausesRestartsAndTheStopInTheirOrder) {
  Begin();
  book->NotePause();
  book->NoteRestart();
  book->NotePause();
  book->NoteRestart();
  book->Stop();
  EXPECT_EQ(Events(), QStringList({"start", "pause", "restart", "pause", "restart", "stop"}));
  const QJsonObject pause = Lines()[1];
  EXPECT_EQ(pause.keys(), QStringList({"event", "time"}));
  EXPECT_EQ(Lines()[2].keys(), QStringList({"event", "time"}));
}

TEST_F(ARunBook, writesAtTheStopWhatWasAddedSinceTheBeginning) {
  CountSome(100);
  Begin();
  CountSome(5);
  CountSome(2);
  book->Stop();
  const QJsonObject stop = Lines().last();
  EXPECT_EQ(stop.keys(), QStringList({"event", "ledger", "time"}));
  EXPECT_EQ(CountedIn(stop), 7);
  EXPECT_EQ(stop["ledger"].toObject().keys(), QStringList({"balanced", "blocks", "time"}));
}

TEST_F(ARunBook, isStoppedOnce) {
  Begin();
  book->Stop();
  book->Stop();
  book.reset();
  EXPECT_EQ(Events(), QStringList({"start", "stop"}));
}

TEST_F(ARunBook, waitsAtTheStopForTheFilesToBeClosed) {
  Begin();
  hasOpenFiles = true;
  CountSome(1);
  book->Stop();
  const qint64 stopped = SecondsNow();
  EXPECT_EQ(Events(), QStringList("start"));
  CountSome(1);
  ASSERT_TRUE(test::WaitFor([&] { return SecondsNow() > stopped; }));
  EXPECT_EQ(Events(), QStringList("start"));
  hasOpenFiles = false;
  ASSERT_TRUE(WaitForEvents({"start", "stop"}));
  EXPECT_LE(SecondsOf(Lines()[1]), stopped) << "not when the files were closed";
  EXPECT_EQ(CountedIn(Lines()[1]), 2) << "all that was recorded";
}

TEST_F(ARunBook, goesOnWhenItIsRestartedBeforeTheFilesAreClosed) {
  Begin();
  hasOpenFiles = true;
  book->Stop();
  book->NoteRestart();
  hasOpenFiles = false;
  CountSome(3);
  book->NotePause();
  EXPECT_EQ(Events(), QStringList({"start", "restart", "pause"}));
  book->Stop();
  EXPECT_EQ(Events(), QStringList({"start", "restart", "pause", "stop"}));
  EXPECT_EQ(CountedIn(Lines().last()), 3);
}

TEST_F(ARunBook, hasASecondStopWhenItIsRestartedAfterTheFirst) {
  Begin();
  CountSome(3);
  book->Stop();
  book->NoteRestart();
  CountSome(4);
  book->Stop();
  EXPECT_EQ(Events(), QStringList({"start", "stop", "restart", "stop"}));
  EXPECT_EQ(CountedIn(Lines()[1]), 3);
  EXPECT_EQ(CountedIn(Lines()[3]), 7) << "since the run began";
}

TEST_F(ARunBook, endsTheRunThatIsStillOpenAtItsOwnEnd) {
  Begin();
  CountSome(6);
  book.reset();
  EXPECT_EQ(Events(), QStringList({"start", "stop"}));
  EXPECT_EQ(CountedIn(Lines()[1]), 6);
}

TEST_F(ARunBook, endsARunAtItsOwnEndWhoseFilesNobodyClosed) {
  Begin();
  hasOpenFiles = true;
  book->Stop();
  book.reset();
  EXPECT_EQ(Events(), QStringList({"start", "stop"}));
}

TEST_F(ARunBook, endsTheRunBeforeWhenTheNextBegins) {
  folder.Make("run_2");
  Begin();
  CountSome(6);
  Begin("run_2");
  CountSome(2);
  EXPECT_EQ(Events(), QStringList({"start", "stop"}));
  EXPECT_EQ(CountedIn(Lines()[1]), 6);
  book->Stop();
  EXPECT_EQ(Events("run_2"), QStringList({"start", "stop"}));
  EXPECT_EQ(CountedIn(Lines("run_2")[1]), 2);
  EXPECT_EQ(Events(), QStringList({"start", "stop"}));
}

TEST_F(ARunBook, endsARunThatWaitsForItsFilesWhenTheNextBegins) {
  folder.Make("run_2");
  Begin();
  hasOpenFiles = true;
  book->Stop();
  Begin("run_2");
  EXPECT_EQ(Events(), QStringList({"start", "stop"}));
  hasOpenFiles = false;
  book->NotePause();
  EXPECT_EQ(Events("run_2"), QStringList({"start", "pause"})) << "the new run wasn't told to stop";
}

TEST_F(ARunBook, writesNothingWithoutARun) {
  book->NotePause();
  book->NoteRestart();
  book->Stop();
  book.reset();
  EXPECT_EQ(folder.Names(), QStringList());
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(ARunBook, tellsOnceThatASummaryCanNotBegin) {
  folder.Make("run_1/run.summary");  // a folder in its place
  Begin();
  ASSERT_EQ(log.Lines().size(), 1);
  EXPECT_TRUE(log.Lines()[0].startsWith("Unable to write the run summary \"" + folder.Path("run_1/run.summary")));
}

}  // namespace
