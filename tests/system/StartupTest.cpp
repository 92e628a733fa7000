#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

#include <QDir>

namespace test {

namespace {

class StartupTest : public SystemTest {
protected:
  QStringList CommandsSent() const {
    QStringList sent;
    for (const QString& call : board.CallsOf(QStringLiteral("command "))) {
      sent << call.section(QLatin1Char(' '), 2);
    }
    return sent;
  }
};

TEST_F(StartupTest, LogsEveryStepAndShowsSpectrumCutsOnStandardOutput) {
  StartAndWaitUntilReady();
  EXPECT_EQ(server.ErrorLines(), LinesUntilReady());
  EXPECT_EQ(server.OutputLines(), (QStringList{QStringLiteral("Spectrum energy_cut_min: 0"),
                                               QStringLiteral("Spectrum energy_cut_max: 1023")}));
}

QJsonValue Command(const char* path, const char* type, const char* endpoint) {
  return QJsonObject{{QStringLiteral("path"), QLatin1String(path)},
                     {QStringLiteral("command_type"), QLatin1String(type)},
                     {QStringLiteral("endpoint_type"), QLatin1String(endpoint)}};
}

TEST_F(StartupTest, TheBoardIsOpenedSetConfiguredStoppedAndArmedBeforeItIsRead) {
  Change(QStringLiteral("Hardware/0/endpoints/1"),
         QJsonObject{{QStringLiteral("name"), QStringLiteral("raw")}, {QStringLiteral("enable"), false}});
  Change(QStringLiteral("Hardware/0/commands"),
         QJsonArray{Command("start raw", "start", "raw"), Command("stop raw", "stop", "raw"),
                    Command("start", "start", "energy"), Command("reset", "reset", "energy"),
                    Command("config", "config", "energy"), Command("stop", "stop", "energy"),
                    Command("left out", "config", ""), Command("all", "config_all", ""),
                    Command("odd", "unknown", "energy")});
  StartAndWaitUntilReady();
  ASSERT_TRUE(WaitFor([this] { return board.CallsOf(QStringLiteral("read")).size() >= 3; }));

  QStringList expected{QStringLiteral("open ") + board.Connection(), QStringLiteral("set 4711 \\par\\Thr=100"),
                       QStringLiteral("set 4711 \\Channel0\\ChEnable=on"),
                       QStringLiteral("set 4711 \\Channel1\\ChEnable=2.5"),
                       QStringLiteral("set 4711 \\Channel2\\ChEnable=1")};
  for (const char* command :
       {"all", "stop", "config", "start", "stop raw", "stop", "stop raw", "reset", "start"}) {
    expected << QStringLiteral("command 4711 ") + QLatin1String(command);
  }
  for (int i = 0; i < 3; ++i) {
    expected << QStringLiteral("read 4711 endpoints\\energy 1000");
  }
  EXPECT_EQ(board.Calls().mid(0, expected.size()), expected);
}

TEST_F(StartupTest, WithoutABoardWideCommandTheUnattachedOnesAreSent) {
  Change(QStringLiteral("Hardware/0/commands"),
         QJsonArray{Command("first", "config", ""), Command("second", "config", "no such endpoint")});
  StartAndWaitUntilReady();
  EXPECT_EQ(CommandsSent(), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

TEST_F(StartupTest, RunsWithoutABoardWhenAllEntriesAreDisabled) {
  Change(QStringLiteral("Hardware/0/enable"), false);
  Change(QStringLiteral("processing"), QJsonArray());
  StartAndWaitUntilReady();
  EXPECT_EQ(server.ErrorLines().size(), 4);
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(StartupTest, ASourceWithoutItsBoardIsReportedAndTheServerServes) {
  Change(QStringLiteral("Hardware/0/enable"), false);
  StartAndWaitUntilReady();
  EXPECT_TRUE(server.ErrorLines().contains(QStringLiteral(
      "Warning: a source block  \"source\"  has been detected but the related board has not been found")));
  EXPECT_EQ(Ask(R"({"cmd":"data_get_status"})"), QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]"));
}

TEST_F(StartupTest, BoardLibrariesAreNamedInAnyLetterCase) {
  Change(QStringLiteral("Hardware/0/board_plugin"), QStringLiteral("LIBcaenDIG2scriptED"));
  StartAndWaitUntilReady();
}

TEST_F(StartupTest, OfSeveralLibrariesOfOneNameTheOneListedLastIsTaken) {
  const QString twin = QStringLiteral("libCAENDig2SCRIPTED.so");
  installation.AddBoardLibrary(Library(QStringLiteral("scripted_board_without_OPEN")), twin);
  const QStringList listed = QDir(installation.BoardsFolder()).entryList(QDir::Files, QDir::Unsorted);
  ASSERT_EQ(listed.size(), 2);
  Start();
  if (listed.last() == twin) {
    EXPECT_EQ(server.WaitForExit(), 1);
    EXPECT_TRUE(server.ErrorLines().contains(QStringLiteral("Connection status:  -15")));
  } else {
    EXPECT_TRUE(server.WaitUntilReady());
  }
  EXPECT_EQ(server.ErrorLines().filter(QStringLiteral("Multiple pulgin")), QStringList());
}

TEST_F(StartupTest, EveryBoardIsArmedInTheOrderOfTheFile) {
  Change(QStringLiteral("Hardware/1"), At(configuration, QStringLiteral("Hardware/0")));
  Change(QStringLiteral("Hardware/1/board_name"), QStringLiteral("Other"));
  StartAndWaitUntilReady();
  const QString start = QStringLiteral(" \\energy\\start");
  EXPECT_EQ(board.CallsOf(QStringLiteral("command ")),
            (QStringList{QStringLiteral("command 4711") + start, QStringLiteral("command 4711") + start,
                         QStringLiteral("command 4712") + start, QStringLiteral("command 4712") + start}));
}

}  // namespace

}  // namespace test
