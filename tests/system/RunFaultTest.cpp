#include "tests/support/SmallFileSystem.h"
#include "tests/support/WaitFor.h"
#include "tests/system/RunTest.h"

#include <QFileInfo>

#include <sys/resource.h>

namespace test {

namespace {

using korvax::runfiles::Form;

// Runs that can't be recorded, and that the server outlives.
class RunFaultTest : public RunTest, public testing::WithParamInterface<Form> {
protected:
  bool IsLogged(const QString& beginning, const QString& path, const QString& reason) {
    const QStringList lines = server.ErrorLines();
    return std::any_of(lines.begin(), lines.end(), [&](const QString& line) {
      return line.startsWith(beginning) && line.contains(QLatin1Char('"') + path + QLatin1Char('"')) &&
             line.contains(reason);
    });
  }
  int LinesWith(const QString& text) const { return server.ErrorLines().filter(text).size(); }

  /// Recording stops by itself while acquisition and queries go on; then a run to a good folder works.
  void ExpectStopAndRecovery() {
    ASSERT_TRUE(FeedUntil([this] { return Status() == 0; }));
    const int reads = board.CallsOf(QStringLiteral("free")).size();
    EXPECT_TRUE(FeedUntil([&] { return board.CallsOf(QStringLiteral("free")).size() > reads; }));

    const QString good = installation.Path(QStringLiteral("good"));
    ConfigureRuns(GetParam(), 1'000'000, good);
    EXPECT_EQ(StartRun(2), Success);
    EXPECT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
    EndServer();
    EXPECT_TRUE(QFileInfo::exists(good + QStringLiteral("/2")));
  }
};

TEST_P(RunFaultTest, ADiskThatFillsUpStopsRecordingAfterTheLastWholeContainer) {
  const SmallFileSystem disk(installation.StoragePath(), 64 << 10);
  if (!disk.IsMounted()) {
    GTEST_SKIP() << "no right to mount a file system here";
  }
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);
  ASSERT_TRUE(FeedUntil([this] {
    for (int block = 0; block < 200; ++block) {
      Feed();
    }
    return Status() == 0;
  }));
  const QString path = File(1, 0, GetParam());
  const QJsonObject counts = Counts();
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to write file"), path, QStringLiteral("No space left on device")));
  EXPECT_EQ(LinesWith(QStringLiteral("Unable to")), 1);
  EXPECT_GT(counts["failed"].toInt(), 0);
  ExpectStopAndRecovery();
  const std::vector<int> energies = EnergiesOf(path, GetParam());
  EXPECT_EQ(ExpectUnbroken(energies), counts["recorded"].toInt());
  EXPECT_EQ(energies.front(), 0);
}

TEST_P(RunFaultTest, AFileThatMayNotGrowStopsRecordingAndNotTheServer) {
  StartAndWaitUntilReady();
  ConfigureRuns(GetParam(), 1'000'000);
  StartRun(1);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  const rlimit limit{64 << 10, RLIM_INFINITY};
  ASSERT_EQ(prlimit(static_cast<pid_t>(server.ProcessId()), RLIMIT_FSIZE, &limit, nullptr), 0);
  ASSERT_TRUE(FeedUntil([this] {
    for (int block = 0; block < 200; ++block) {
      Feed();
    }
    return Status() == 0;
  }));
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to write file"), File(1, 0, GetParam()),
                       QStringLiteral("\"File too large\"")));
  ExpectStopAndRecovery();
}

TEST_P(RunFaultTest, AFolderThatDisappearsStopsRecording) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  StartRun(1);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  const QString path = File(1, 0, GetParam());
  ASSERT_TRUE(QDir(QFileInfo(path).path()).removeRecursively());
  ASSERT_TRUE(FeedUntil([this] { return Status() == 0; }));
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to write file"), path, QStringLiteral("the file was removed")));
  EXPECT_GT(Counts()["failed"].toInt(), 0);
  ExpectStopAndRecovery();
}

TEST_P(RunFaultTest, AFolderThatIsGoneBeforeTheFirstEventStopsRecording) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  StartRun(1);
  const QString path = File(1, 0, GetParam());
  ASSERT_TRUE(QDir(QFileInfo(path).path()).removeRecursively());
  ASSERT_TRUE(FeedUntil([this] { return Status() == 0; }));
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to open file "), path,
                       QStringLiteral(" errno:  \"No such file or directory\" . Acquisition disabled in order to "
                                      "prevent software crash")));
  ExpectStopAndRecovery();
}

TEST_P(RunFaultTest, AFolderInTheFilesPlaceStopsRecording) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  StartRun(1);
  const QString path = File(1, 0, GetParam());
  ASSERT_TRUE(QDir().mkpath(path));
  ASSERT_TRUE(FeedUntil([this] { return Status() == 0; }));
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to open file "), path, QStringLiteral("\"Is a directory\"")));
  EXPECT_EQ(LinesWith(QStringLiteral("Unable to open file")), 1);
  ExpectStopAndRecovery();
}

TEST_P(RunFaultTest, AFolderThatMayNotBeWrittenStopsRecording) {
  server.RunUnprivileged();
  ConfigureRuns(GetParam(), 1'000'000);
  const QString storage = installation.StoragePath();
  const auto everything = QFileDevice::Permissions(0x7777);
  ASSERT_TRUE(QFile::setPermissions(storage, everything));
  Start();
  if (!server.WaitUntilReady()) {
    GTEST_SKIP() << "a user without rights can't start the server here";
  }
  StartRun(1);
  const QString path = File(1, 0, GetParam());
  ASSERT_TRUE(QFile::setPermissions(QFileInfo(path).path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                                                QFileDevice::ReadOther | QFileDevice::ExeOther));
  ASSERT_TRUE(FeedUntil([this] { return Status() == 0; }));
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to open file "), path, QStringLiteral("\"Permission denied\"")));
}

TEST_P(RunFaultTest, AnUnknownFormatStopsRecording) {
  ConfigureRuns(GetParam(), 1'000'000);
  Change(QStringLiteral("storage/format"), QStringLiteral("XML"));
  installation.WriteConfiguration(ToText(configuration));
  StartAndWaitUntilReady();
  StartRun(1);
  ASSERT_TRUE(FeedUntil([this] { return Status() == 0; }));
  EXPECT_TRUE(IsLogged(QStringLiteral("Unable to open file "),
                       installation.StoragePath() + QStringLiteral("/1/dumper_0"),
                       QStringLiteral("Acquisition disabled in order to prevent software crash")));
  ExpectStopAndRecovery();
}

INSTANTIATE_TEST_SUITE_P(EveryForm, RunFaultTest, testing::Values(Form::Binary, Form::Csv, Form::Json),
                         NameOfForm);

}  // namespace

}  // namespace test
