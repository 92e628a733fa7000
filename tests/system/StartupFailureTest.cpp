#include "tests/system/SystemTest.h"

#include <QFile>

namespace test {

namespace {

// Every way in which start-up fails: the lines on standard error, all of them and in order, and the status.
class StartupFailureTest : public SystemTest {
protected:
  void ExpectEnd(int status, const QStringList& lines) {
    EXPECT_EQ(server.WaitForExit(), status);
    EXPECT_EQ(server.ErrorLines(), lines);
  }
  QString Quoted(const QString& text) const { return QLatin1Char('"') + text + QLatin1Char('"'); }
};

TEST_F(StartupFailureTest, ConfigurationFileMissing) {
  server.Start({QStringLiteral("-c"), QStringLiteral("/no/such/file.json")});
  ExpectEnd(1, {QStringLiteral("Unable to locate configuration file  \"/no/such/file.json\""),
                QStringLiteral("BOARD SERVER IS CLOSING..."), QStringLiteral("BOARD SERVER IS KILLED")});
}

TEST_F(StartupFailureTest, ConfigurationNotParsable) {
  installation.WriteConfiguration("{\"storage\": ");
  server.Start({QStringLiteral("-c"), installation.ConfigurationPath()});
  ExpectEnd(1, FirstLines() << QStringLiteral("Configuration file  ") + Quoted(installation.ConfigurationPath()) +
                                   QStringLiteral(" is invalid"));
}

TEST_F(StartupFailureTest, ConfigurationUnreadable) {
  installation.WriteConfiguration(ToText(configuration));
  QFile::setPermissions(installation.ConfigurationPath(), QFile::WriteOwner);
  server.RunUnprivileged();
  server.Start({QStringLiteral("-c"), installation.ConfigurationPath()});
  ExpectEnd(1, FirstLines() << QStringLiteral("Configuration file  ") + Quoted(installation.ConfigurationPath()) +
                                   QStringLiteral(" is invalid"));
}

TEST_F(StartupFailureTest, StorageFolderMissing) {
  const QString storage = installation.Path(QStringLiteral("nowhere"));
  Change(QStringLiteral("storage/file_path"), storage);
  Start();
  ExpectEnd(1, FirstLines() << QStringLiteral("Storage folder does not exist on this server. Create:  ") +
                                   Quoted(storage) + QStringLiteral("  and check write permission"));
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(StartupFailureTest, StorageFolderMissingWhenBoardLibrariesHaveAlreadyBeenLoaded) {
  Installation::Write(installation.BoardsFolder() + QStringLiteral("/libCAENDig2Text.so"), "not a library");
  Change(QStringLiteral("storage"), QJsonValue());
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  const QStringList lines = server.ErrorLines();
  EXPECT_EQ(lines.size(), 6);
  EXPECT_EQ(lines.value(2), QStringLiteral("Unable to load plugin:  \"libCAENDig2Text.so\""));
  EXPECT_EQ(lines.value(5),
            QStringLiteral("Storage folder does not exist on this server. Create:  \"\"  and check "
                           "write permission"));
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(StartupFailureTest, StorageFolderNotWritable) {
  QFile::setPermissions(installation.StoragePath(),
                        QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
  server.RunUnprivileged();
  Start();
  ExpectEnd(1, FirstLines() << QStringLiteral("Storage folder is not writable. Create:  ") +
                                   Quoted(installation.StoragePath()) +
                                   QStringLiteral("  and check write permission for current user"));
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(StartupFailureTest, NoHardware) {
  for (const QJsonValue& hardware : {QJsonValue(QJsonArray()), QJsonValue(QJsonValue::Undefined)}) {
    Change(QStringLiteral("Hardware"), hardware);
    Start();
    ExpectEnd(1, FirstLines() << QStringLiteral("Storage folder is:  ") + Quoted(installation.StoragePath())
                              << QStringLiteral("No HARDWARE devices is configuration file  ") +
                                     Quoted(installation.ConfigurationPath()));
  }
}

TEST_F(StartupFailureTest, NoLibraryForABoardEndsWithStatusZero) {
  Change(QStringLiteral("Hardware/0/board_plugin"), QStringLiteral("libCAENDig2Other"));
  Start();
  ExpectEnd(0, LinesUntilBoard() << QStringLiteral("Unable to locate a board plugin library for  \"Two\""));
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(StartupFailureTest, BoardThatDoesNotOpen) {
  const QString connection = board.Connection() + QStringLiteral("?open=-6");
  Change(QStringLiteral("Hardware/0/board_connection_string"), connection);
  Start();
  QStringList lines = LinesUntilBoard();
  lines.last() = QStringLiteral("\tConnection address: ") + Quoted(connection);
  lines << QStringLiteral("Using  \"libcaendig2scripted\"  for board  \"Digitizer\"")
        << QStringLiteral("Connection status:  -6")
        << QStringLiteral("HARDWARE device:  ") + Quoted(connection) +
               QStringLiteral("  is reporting isssues in connection procedure")
        << QStringLiteral("KORVAX Server can not start without all board correctly loaded")
        << QStringLiteral("Check connection or disable it from configuration file");
  ExpectEnd(1, lines);
  EXPECT_EQ(board.Calls(), QStringList{QStringLiteral("open ") + connection});
}

TEST_F(StartupFailureTest, ASecondBoardThatDoesNotOpenEndsTheServerBeforeAnyCommand) {
  QJsonValue second = At(configuration, QStringLiteral("Hardware/0"));
  second = With(second, QStringLiteral("board_connection_string"), board.Connection() + QStringLiteral("?open=3"));
  Change(QStringLiteral("Hardware/1"), second);
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_EQ(board.CallsOf(QStringLiteral("open")).size(), 2);
  EXPECT_EQ(board.CallsOf(QStringLiteral("command")), QStringList());
  EXPECT_EQ(board.CallsOf(QStringLiteral("read")), QStringList());
}

}  // namespace

}  // namespace test
