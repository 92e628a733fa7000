#include "tests/system/SystemTest.h"

#include <QDir>
#include <QFile>

namespace test {

namespace {

class BoardLibraryTest : public SystemTest {
protected:
  void Replace(const QString& target) {
    QFile::remove(LibraryPath());
    installation.AddBoardLibrary(Library(target), QStringLiteral("libCAENDig2Scripted.so"));
  }
  QString LibraryPath() const { return installation.BoardsFolder() + QStringLiteral("/libCAENDig2Scripted.so"); }
};

TEST_F(BoardLibraryTest, ALibraryThatIsATextIsReportedInThreeLinesAndItsBoardEndsTheServer) {
  QFile::remove(LibraryPath());
  Installation::Write(LibraryPath(), "This is not a library.\n");
  Start();
  EXPECT_EQ(server.WaitForExit(), 0);
  const QStringList lines = server.ErrorLines();
  ASSERT_EQ(lines.size(), 11) << lines.join(QLatin1Char('\n')).toStdString();
  EXPECT_EQ(lines[2], QStringLiteral("Unable to load plugin:  \"libCAENDig2Scripted.so\""));
  EXPECT_TRUE(lines[3].startsWith(QStringLiteral("Error:   \"Cannot load library "))) << lines[3].toStdString();
  EXPECT_EQ(lines[4], QStringLiteral("Execution terminated"));
  EXPECT_EQ(lines[5], LinesUntilBoard().at(2));
  EXPECT_EQ(lines[10], QStringLiteral("Unable to locate a board plugin library for  \"Two\""));
}

TEST_F(BoardLibraryTest, ALibraryThatDoesNotLoadDoesNotDisturbTheOthers) {
  Installation::Write(installation.BoardsFolder() + QStringLiteral("/libCAENDig2Text.so"), "");
  StartAndWaitUntilReady();
  EXPECT_TRUE(server.ErrorLines().contains(QStringLiteral("Execution terminated")));
}

TEST_F(BoardLibraryTest, FilesThatAreNotNamedLikeBoardLibrariesArePassedOver) {
  for (const char* name : {"libcaendig2other.so", "libOther.so", "libCAENDig2Other.txt", "README"}) {
    Installation::Write(installation.BoardsFolder() + QLatin1Char('/') + QLatin1String(name), "no library");
  }
  StartAndWaitUntilReady();
  EXPECT_EQ(server.ErrorLines().filter(QStringLiteral("Unable to load plugin")), QStringList());
}

TEST_F(BoardLibraryTest, AMissingBoardsFolderIsNoFailureOfItsOwn) {
  QFile::remove(LibraryPath());
  ASSERT_TRUE(QDir().rmdir(installation.BoardsFolder()));
  Start();
  EXPECT_EQ(server.WaitForExit(), 0);
  EXPECT_EQ(server.ErrorLines(), LinesUntilBoard()
                                     << QStringLiteral("Unable to locate a board plugin library for  \"Two\""));
}

TEST_F(BoardLibraryTest, WithoutOpenTheBoardDoesNotOpen) {
  Replace(QStringLiteral("scripted_board_without_OPEN"));
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_EQ(server.ErrorLines().value(8), QStringLiteral("Connection status:  -15"));
  EXPECT_EQ(server.ErrorLines().last(), QStringLiteral("Check connection or disable it from configuration file"));
  EXPECT_EQ(board.Calls(), QStringList());
}

TEST_F(BoardLibraryTest, WithoutSetValueTheOtherCallsAreMade) {
  Replace(QStringLiteral("scripted_board_without_SETVALUE"));
  StartAndWaitUntilReady();
  EXPECT_TRUE(server.ErrorLines().contains(QStringLiteral(R"(Set "\\par\\Thr"   "100")")));
  EXPECT_EQ(board.CallsOf(QStringLiteral("set")), QStringList());
  RunSpectrum();
  board.FeedRamp(2, 10, 50);
  ExpectEachBinOnce(2, 10, 50);
}

TEST_F(BoardLibraryTest, WithoutGetValueEventsAreCounted) {
  Replace(QStringLiteral("scripted_board_without_GETVALUE"));
  StartAndWaitUntilReady();
  RunSpectrum();
  board.FeedRamp(2, 10, 50);
  ExpectEachBinOnce(2, 10, 50);
}

TEST_F(BoardLibraryTest, WithoutSendCommandEventsAreCounted) {
  Replace(QStringLiteral("scripted_board_without_SENDCOMMAND"));
  StartAndWaitUntilReady();
  EXPECT_EQ(board.CallsOf(QStringLiteral("command")), QStringList());
  RunSpectrum();
  board.FeedRamp(2, 10, 50);
  ExpectEachBinOnce(2, 10, 50);
}

TEST_F(BoardLibraryTest, WithoutReadDataTheServerServesAndNothingIsHandedBack) {
  Replace(QStringLiteral("scripted_board_without_READDATA"));
  StartAndWaitUntilReady();
  board.FeedRamp(2, 10, 50);
  RunSpectrum();
  EXPECT_EQ(Counts(2), std::vector<int>(1024, 0));
  EXPECT_EQ(board.CallsOf(QStringLiteral("free")), QStringList());
}

TEST_F(BoardLibraryTest, WithoutFreePointerEventsAreCounted) {
  Replace(QStringLiteral("scripted_board_without_FREEPOINTER"));
  StartAndWaitUntilReady();
  RunSpectrum();
  board.FeedRamp(2, 10, 50);
  ExpectEachBinOnce(2, 10, 50);
}

}  // namespace

}  // namespace test
