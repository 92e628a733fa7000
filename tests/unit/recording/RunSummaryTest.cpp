#include "recording/RunSummary.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/RunFolder.h"

#include <thread>
#include <vector>

namespace {

namespace summary = korvax::RunSummary;

constexpr const char* Name = "run_1/run.summary";

QString LogLine(const test::RunFolder& folder, const char* problem) {
  return QStringLiteral(
             "Unable to write the run summary \"%1\" : \"%2\" . The run goes on; its files can't all be verified.")
      .arg(folder.Path(Name), QLatin1String(problem));
}

TEST(ARunSummary, isLinesOfJsonInTheOrderOfTheirComing) {
  const test::RunFolder folder;
  const test::LogCapture log;
  summary::Begin(folder.Path("run_1"), {{"event", "start"}, {"run_id", "1"}});
  summary::Append(folder.Path("run_1"), {{"event", "pause"}});
  summary::Append(folder.Path("run_1"), {});
  EXPECT_EQ(folder.Bytes(Name), "{\"event\":\"start\",\"run_id\":\"1\"}\n{\"event\":\"pause\"}\n{}\n");
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(ARunSummary, isWrittenAsUtf8WithoutNewlinesInsideALine) {
  const test::RunFolder folder;
  summary::Begin(folder.Path("run_1"), {{"run_id", QStringLiteral("a\nb \u00e9")}});
  EXPECT_EQ(folder.Bytes(Name), "{\"run_id\":\"a\\nb \xc3\xa9\"}\n");
}

TEST(ARunSummary, isNotMadeByAFurtherLine) {
  const test::RunFolder folder;
  const test::LogCapture log;
  summary::Append(folder.Path("run_1"), {{"event", "open"}});
  summary::Append(folder.Path("missing"), {{"event", "open"}});
  EXPECT_EQ(folder.Names(), QStringList());
  EXPECT_FALSE(QDir(folder.Path("missing")).exists());
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST(ARunSummary, ofAFolderThatIsThereAlreadyIsAddedTo) {
  const test::RunFolder folder;
  summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  EXPECT_EQ(folder.Bytes(Name), "{\"event\":\"start\"}\n{\"event\":\"start\"}\n");
}

TEST(ARunSummary, ofAMissingFolderHasOneLogLine) {
  const test::RunFolder folder;
  ASSERT_TRUE(QDir(folder.Path("run_1")).removeRecursively());
  const test::LogCapture log;
  summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  EXPECT_EQ(log.Lines(), QStringList(LogLine(folder, "No such file or directory")));
}

TEST(ARunSummary, thatCanNotBeWrittenHasOneLogLineARun) {
  const test::RunFolder folder;
  test::LogCapture log;
  {
    const test::FileSizeLimit limit(5);
    summary::Begin(folder.Path("run_1"), {{"event", "start"}});
    summary::Append(folder.Path("run_1"), {{"event", "pause"}});
    EXPECT_EQ(log.Lines(), QStringList(LogLine(folder, "File too large")));
  }
  EXPECT_EQ(folder.Bytes(Name), "");
  log.Clear();
  summary::Append(folder.Path("run_1"), {{"event", "stop"}});
  EXPECT_EQ(folder.Bytes(Name), "{\"event\":\"stop\"}\n");
  EXPECT_EQ(log.Lines(), QStringList());
  const test::FileSizeLimit limit(5);
  summary::Append(folder.Path("run_1"), {{"event", "pause"}});
  EXPECT_EQ(log.Lines(), QStringList());
  summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  EXPECT_EQ(log.Lines(), QStringList(LogLine(folder, "File too large")));
}

TEST(ARunSummary, takesALineBackWholeThatFindsNoRoom) {
  const test::RunFolder folder;
  const test::LogCapture log;
  summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  const std::string before = folder.Bytes(Name);
  ASSERT_EQ(before, "{\"event\":\"start\"}\n");
  for (const std::size_t room : {std::size_t{0}, std::size_t{1}, std::size_t{15}}) {
    const test::FileSizeLimit limit(before.size() + room);
    summary::Append(folder.Path("run_1"), {{"event", "pause"}});
    EXPECT_EQ(folder.Bytes(Name), before) << room;
  }
  EXPECT_EQ(log.Lines(), QStringList(LogLine(folder, "File too large")));
  summary::Append(folder.Path("run_1"), {{"event", "stop"}});
  EXPECT_EQ(folder.Bytes(Name), before + "{\"event\":\"stop\"}\n");
}

TEST(ARunSummary, takesALineThatJustFits) {
  const test::RunFolder folder;
  const test::LogCapture log;
  {
    const test::FileSizeLimit limit(18);
    summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  }
  EXPECT_EQ(folder.Bytes(Name), "{\"event\":\"start\"}\n");
  EXPECT_EQ(log.Lines(), QStringList());
}

// Qt would cut the text at the NUL, and so write to another folder's.
TEST(ARunSummary, ofAPathWithANulIsNotWritten) {
  const test::RunFolder folder;
  const QString path = folder.Path("run_1") + "/run.summary" + QChar(0);
  summary::Begin(path, {{"event", "start"}});
  summary::Append(path, {{"event", "stop"}});
  EXPECT_EQ(folder.Names(), QStringList());
}

TEST(ARunSummary, hasWholeLinesOfManyThreads) {
  const test::RunFolder folder;
  summary::Begin(folder.Path("run_1"), {{"event", "start"}});
  const QString path = folder.Path("run_1");
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&path, t] {
      for (int i = 0; i < 50; ++i) {
        summary::Append(path, {{"thread", t}, {"line", i}});
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  QList<QByteArray> lines = QByteArray::fromStdString(folder.Bytes(Name)).split('\n');
  EXPECT_EQ(lines.takeLast(), "");
  ASSERT_EQ(lines.size(), 1 + 200);
  std::vector<int> next(4, 0);
  for (const QByteArray& line : lines.mid(1)) {
    const QJsonObject object = test::Object(line);
    EXPECT_EQ(object["line"].toInt(-1), next.at(static_cast<std::size_t>(object["thread"].toInt()))++)
        << line.toStdString();
  }
  EXPECT_EQ(next, std::vector<int>(4, 50));
}

}  // namespace
