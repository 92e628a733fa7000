#include "tests/unit/recording/DumperFixture.h"

#include <QRegularExpression>

namespace {

test::FakeClock& Machine() {
  static test::FakeClock clock;
  return clock;
}

}  // namespace

// The block takes no clock but the machine's, which is this one for all of this program.
const korvax::Clock& korvax::Clock::System() {
  return Machine();
}

namespace {

// A dumper whose time passes as the test says.
class RunInformation : public test::DumperFixture {
protected:
  void PassMs(qint64 ms) { Machine().steadyMs += ms; }
  /// One record that stands for so many events and one that stands for none: once that is counted, the worker is
  /// done with the first.
  void Record(qint32 events) {
    const int recorded = Counts()["recorded"].toInt();
    Feed(test::Events(events));
    Feed(test::Events(0));
    ASSERT_TRUE(WaitForCount("recorded", recorded + 2));
  }
  /// One key's value as it is written.
  std::string Value(const char* key) {
    return Info()
        .section(QStringLiteral("\"%1\":").arg(key), 1)
        .section(QRegularExpression("[,}]"), 0, 0)
        .toStdString();
  }
};

TEST_F(RunInformation, hasTheRunningTimeInGeneralFormWithSixDigits) {
  const std::pair<qint64, const char*> rows[] = {
      {1, "0.001"},
      {500, "0.5"},
      {12'000, "12"},
      {999'999, "999.999"},
      {1'000'006, "1000.01"},
      {123'456'499, "123456"},
      {999'999'499, "999999"},
      {1'000'000'000, "1e+06"},
      {1'234'567'890, "1.23457e+06"},
      {86'400'000'000'000, "8.64e+10"},
  };
  Start("7");
  Record(1);
  EXPECT_EQ(Value("running_time"), "0");
  qint64 passed = 0;
  for (const auto& [ms, text] : rows) {
    PassMs(ms - passed);
    passed = ms;
    Record(1);
    EXPECT_EQ(Value("running_time"), text) << ms;
  }
}

TEST_F(RunInformation, hasTheEventRateInGeneralFormWithSixDigits) {
  struct Row {
    qint32 events;
    qint64 ms;
    const char* rate;
  };
  const Row rows[] = {
      {1, 2'000, "0.5"},
      {1, 3'000, "0.333333"},
      {1, 100'000'000, "1e-05"},
      {1234, 1'001, "1232.77"},
      {1'999'998, 2'000, "999999"},
      {2'000'001, 2'000, "1e+06"},
      {2'147'483'647, 1'500, "1.43166e+09"},
      {0, 1'001, "0"},
  };
  Start("7");
  Record(0);
  EXPECT_EQ(Value("event_rate"), "0");
  for (const Row& row : rows) {
    PassMs(row.ms);
    Record(row.events);
    EXPECT_EQ(Value("event_rate"), row.rate);
  }
}

TEST_F(RunInformation, keepsTheEventRateUntilMoreThanASecondHasPassed) {
  Start("7");
  Record(0);
  PassMs(2'000);
  Record(1'000);
  EXPECT_EQ(Value("event_rate"), "500");
  PassMs(1'000);
  Record(7);
  EXPECT_EQ(Value("event_rate"), "500");
  PassMs(1);
  Record(0);
  EXPECT_EQ(Value("event_rate"), "6.99301");
}

TEST_F(RunInformation, hasTheSpaceOfTheCurrentFileAndTheStoredEventsInDecimal) {
  Start("7", "BIN");
  block.ConfigureDump(1'000'000, "BIN", folder.path());
  EXPECT_EQ(Value("used_space"), "0");
  Record(1);
  EXPECT_EQ(Value("used_space"), "64") << "a head of 14 bytes and two records of 25";
  DataMessage message = test::MessageOf();
  message.batch->events.resize(1'234'567);
  ASSERT_TRUE(feed.Push(std::move(message)));
  ASSERT_TRUE(WaitForCount("recorded", 1'234'569));
  EXPECT_EQ(Value("used_space"), "30864239");
  EXPECT_EQ(Value("stored_events"), "1234568");
}

TEST_F(RunInformation, hasTheSpaceOfTheFileThatIsOpenNotOfTheRun) {
  Start("7");
  block.ConfigureDump(2, "CSV", folder.path());
  for (int i = 0; i < 3; ++i) {
    Feed(test::Event(1), test::Event(2), test::Event(3));
  }
  ASSERT_TRUE(WaitForCount("recorded", 9));
  EXPECT_EQ(Value("used_space"), "21") << "of 63 in all";
}

TEST_F(RunInformation, standsStillInAPauseAndGoesOnWithTheTimeOfTheFile) {
  Start("7");
  Record(1);
  PassMs(2'500);
  Record(1);
  block.PauseDump();
  const QString paused = Info();
  EXPECT_EQ(paused,
            "{\"status\":2,\"name\": \"dumper\",\"event_rate\":0.8,\"id\":7,\"stored_events\":2,"
            "\"running_time\":2.5,\"used_space\":28}");
  PassMs(60'000);
  Feed(test::Event(1));
  ASSERT_TRUE(WaitForCount("discarded", 1));
  EXPECT_EQ(Info(), paused);
  EXPECT_EQ(Counts()["paused_running_time"].toInt(), 2);
  Machine().secondsSinceEpoch = 1'700'000'060;
  block.ReStartDump();
  EXPECT_EQ(Counts()["run_start"].toInt(), 1'700'000'060);
  EXPECT_EQ(Value("status"), "1");
  EXPECT_EQ(Value("running_time"), "2.5") << "until the next event";
  PassMs(500);
  Record(1);
  EXPECT_EQ(Value("running_time"), "63") << "the pause is part of it";
  EXPECT_EQ(Value("stored_events"), "3");
}

TEST(RunInformationsName, isInsertedAsItStands) {
  for (const char* name : {"det \"A\"", "a\\b", "", "tab\there"}) {
    DataDumper block(nullptr, test::DumperContext(), QJsonObject{{"name", name}});
    QString info;
    block.GetRunInfo(&info);
    EXPECT_EQ(info, QStringLiteral("{\"status\":0,\"name\": \"") + name +
                        "\",\"event_rate\":0,\"id\":0,\"stored_events\":0,\"running_time\":0,\"used_space\":0}");
  }
}

TEST(RunInformationsName, isInsertedBeyondAsciiAndLatin1Too) {
  const QString name = QString(QChar(0xB5)) + "-" + QChar(0x0416) + QChar(0xD83D) + QChar(0xDE00);
  DataDumper block(nullptr, test::DumperContext(), QJsonObject{{"name", name}});
  block.StartDump(name);
  QString info;
  block.GetRunInfo(&info);
  EXPECT_EQ(info, "{\"status\":1,\"name\": \"" + name + "\",\"event_rate\":0,\"id\":" + name +
                      ",\"stored_events\":0,\"running_time\":0,\"used_space\":0}");
}

}  // namespace
