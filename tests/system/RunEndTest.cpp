#include "tests/support/WaitFor.h"
#include "tests/system/RunTest.h"

#include <csignal>

namespace test {

namespace {

using korvax::runfiles::FileFault;
using korvax::runfiles::Form;

class RunEndTest : public RunTest, public testing::WithParamInterface<Form> {};

TEST_P(RunEndTest, ASignalEndsARunWithEverythingWrittenThatTheBoardHandedOut) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  for (int block = 0; block < 500; ++block) {
    Feed();
  }
  server.Send(GetParam() == Form::Csv ? SIGINT : SIGTERM);
  EXPECT_EQ(server.WaitForExit(), 0);
  const QStringList lines = server.ErrorLines();
  for (const QString& line : lines.mid(lines.indexOf(QStringLiteral("KORVAX IS STARTED AND READY")) + 1)) {
    EXPECT_TRUE(line.startsWith(QLatin1String(" TIMER STAT "))) << qPrintable(line);
  }
  const std::vector<int> energies = EnergiesOf(File(1, 0, GetParam()), GetParam());
  EXPECT_EQ(ExpectUnbroken(energies), board.CallsOf(QStringLiteral("free")).size() * BlockEvents);
  EXPECT_EQ(energies.front(), 0);
}

TEST_P(RunEndTest, AKilledServerLeavesEveryFinishedMessageReadable) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  StartRun(1);
  qint64 stored = 0;
  ASSERT_TRUE(FeedUntil([&] { return (stored = StoredEvents()) >= 50 * BlockEvents; }));
  server.Send(SIGKILL);
  EXPECT_EQ(server.WaitForExit(), std::nullopt);
  // The message in hand may be cut off.
  std::optional<FileFault> fault;
  const std::vector<int> energies = EnergiesOf(File(1, 0, GetParam()), GetParam(), &fault);
  EXPECT_GE(ExpectUnbroken(energies), stored);
  EXPECT_EQ(energies.front(), 0);
  const bool isCut = fault && fault->kind == FileFault::Kind::CutOff;
  const bool isOpen = fault && fault->kind == FileFault::Kind::NotClosed;
  EXPECT_TRUE(GetParam() == Form::Json ? isOpen : !fault || isCut);
}

TEST_P(RunEndTest, AStopAndAStartAtOnceBeginTheNewRunInItsOwnFolder) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  StartRun(1);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  EXPECT_EQ(Command("stop_dump"), Success);
  EXPECT_EQ(StartRun(2), Success);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  EndServer();
  const std::vector<int> first = EnergiesOf(File(1, 0, GetParam()), GetParam());
  const std::vector<int> second = EnergiesOf(File(2, 0, GetParam()), GetParam());
  EXPECT_GT(ExpectUnbroken(first), 0);
  EXPECT_GT(ExpectUnbroken(second), 0);
  EXPECT_GE(second.front(), first.back());
}

TEST_P(RunEndTest, WhatAPauseDiscardsIsCountedAndTheRestIsThere) {
  ConfigureRuns(GetParam(), 1'000'000);
  StartAndWaitUntilReady();
  StartRun(1);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  EXPECT_EQ(Command("pause_dump"), Success);
  ASSERT_TRUE(FeedUntil([this] { return Counts()["discarded"].toInt() > 0; }));
  EXPECT_EQ(Command("restart_dump"), Success);
  const qint64 before = StoredEvents();
  ASSERT_TRUE(FeedUntil([&] { return StoredEvents() > before; }));
  const int discarded = Counts()["discarded"].toInt();
  EndServer();
  const std::vector<int> energies = EnergiesOf(File(1, 0, GetParam()), GetParam());
  EXPECT_EQ(energies.front(), 0);
  EXPECT_EQ(energies.back() + 1, static_cast<int>(energies.size()) + discarded);
}

INSTANTIATE_TEST_SUITE_P(EveryForm, RunEndTest, testing::Values(Form::Binary, Form::Csv, Form::Json), NameOfForm);

}  // namespace

}  // namespace test
