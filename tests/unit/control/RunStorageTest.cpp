#include "tests/unit/control/RunFixture.h"

namespace {

// What a run takes from the configuration's "storage" section.
class RunStorage : public RunFixture {
protected:
  QString Ask(QueryHandler& recorder, QString query) {
    QString answer;
    recorder.InterpretMessage(&query, &answer);
    return answer;
  }
  QJsonObject Counts(QueryHandler& recorder) {
    const char* const query =
        &recorder == &rates ? R"({"args": [{"cmd": "get_dump_counts"}]})" : R"({"cmd": "get_dump_counts"})";
    return test::Array(Ask(recorder, query).toUtf8())[0].toObject();
  }
  int Status(QueryHandler& recorder) { return Counts(recorder)["status"].toInt(); }
  /// Pushes so many messages and waits until each of them is counted.
  template <typename Recorder, typename MakeMessage>
  void Feed(Recorder& recorder, PinOutput& feed, MakeMessage make, int messages, const char* count = "recorded") {
    for (int i = 0; i < messages; ++i) {
      ASSERT_TRUE(feed.Push(make()));
    }
    ASSERT_TRUE(test::WaitFor([&] {
      recorder.NewDataInTheInputPin(0);  // a wake-up may be lost
      return Counts(recorder)[QLatin1String(count)].toInt() == messages;
    })) << count;
  }
  int LinesOf(const QString& file) const {
    QFile lines(Path(file));
    return lines.open(QIODevice::ReadOnly) ? lines.readAll().count('\n') : -1;
  }
  std::string StartRun(const QString& run) { return Tell(R"({"cmd": "start_dump", "run_id": ")" + run + "\"}"); }
  /// Where runs go without a storage root, whether the test may write there or not.
  QString RunInTheRoot() const { return "/korvax-test-" + folder.path().section('/', -1); }
  bool WasFolderWanted(const QString& path) const {
    return QFileInfo(path).isDir() || log.Count("Unable to create run folder \"" + path +
                                                "\" : nothing will be recorded. Check write permission.") == 1;
  }

  PinOutput events{"energy"};
  PinOutput waves{"waveform"};
  PinOutput records{"rate_counters"};
  DataDumper& dumper = AddRecorder<DataDumper>("d", events);
  Oscilloscope& scope = AddOscilloscope("scope", waves);
  SinkRateCounter& rates = AddRecorder<SinkRateCounter>("rates", records);
};

TEST_F(RunStorage, EventsPerFileReachTheRecordersThatSplitTheirFiles) {
  Configure(R"(, "format": "CSV", "events_per_file": 1, "wavedump_time_interval": -1,
               "enable_list": true, "enable_wave": true, "enable_mcs": true)");
  ASSERT_EQ(StartRun("1"), Success);
  Feed(dumper, events, Event, 5);
  EXPECT_EQ(LinesOf("1/d_0.csv"), 2) << "the first rollover begins the first file anew";
  EXPECT_EQ(LinesOf("1/d_1.csv"), 1);
  Feed(scope, waves, Waves, 5);
  EXPECT_EQ(LinesOf("1/scope_0.csv"), 2);
  EXPECT_EQ(LinesOf("1/scope_1.csv"), 2);
  EXPECT_EQ(LinesOf("1/scope_2.csv"), 1);
  Feed(rates, records, Rates, 5);
  EXPECT_EQ(LinesOf("1/rates_0.csv"), 6) << "a head and all records: rate files are never split";
  EXPECT_EQ(LinesOf("1/rates_1.csv"), -1);
}

TEST_F(RunStorage, AnotherNumberOfEventsPerFileHoldsFromTheNextRunOn) {
  const QByteArray keys = R"(, "format": "CSV", "wavedump_time_interval": -1, "enable_list": true,
                             "enable_wave": true, "events_per_file": )";
  Configure(keys + "3");
  ASSERT_EQ(StartRun("1"), Success);
  Feed(dumper, events, Event, 4);
  Feed(scope, waves, Waves, 4);
  EXPECT_EQ(LinesOf("1/d_0.csv"), 4);
  EXPECT_EQ(LinesOf("1/scope_0.csv"), 4);
  Configure(keys + "0");
  Tell(R"({"cmd": "stop_dump"})");
  ASSERT_EQ(StartRun("2"), Success);
  Feed(dumper, events, Event, 3);
  Feed(scope, waves, Waves, 3);
  EXPECT_EQ(LinesOf("2/d_1.csv"), 1);
  EXPECT_EQ(LinesOf("2/scope_2.csv"), 1);
}

TEST_F(RunStorage, TheIntervalBetweenWavesReachesTheOscilloscope) {
  const QByteArray keys = R"(, "format": "CSV", "events_per_file": 1000, "enable_wave": true,
                             "wavedump_time_interval": )";
  Configure(keys + "2147483647");
  ASSERT_EQ(StartRun("1"), Success);
  Feed(scope, waves, Waves, 20, "discarded");
  EXPECT_EQ(LinesOf("1/scope_0.csv"), 0);
  Tell(R"({"cmd": "stop_dump"})");
  Configure(keys + "-1");
  ASSERT_EQ(StartRun("2"), Success);
  Feed(scope, waves, Waves, 20);
  EXPECT_EQ(LinesOf("2/scope_0.csv"), 20);
}

TEST_F(RunStorage, ANumberOfEventsPerFileThatIsNoIntegerIsZero) {
  int run = 0;
  for (const char* value : {R"("5")", "2.5", "true", "null", "[5]", "3000000000"}) {
    const QString id = QString::number(++run);
    Configure(R"(, "format": "CSV", "enable_list": true, "events_per_file": )" + QByteArray(value));
    ASSERT_EQ(StartRun(id), Success);
    Feed(dumper, events, Event, 3);
    EXPECT_EQ(LinesOf(id + "/d_0.csv"), 1) << value;
    EXPECT_EQ(LinesOf(id + "/d_1.csv"), 1) << value;
    Tell(R"({"cmd": "stop_dump"})");
  }
}

TEST_F(RunStorage, ASwitchThatIsNotTrueStartsNothing) {
  int run = 0;
  for (const char* value : {"1", R"("true")", "null", "[true]", "false"}) {
    const QByteArray on = QByteArray(value);
    Configure(R"(, "format": "CSV", "enable_list": )" + on + R"(, "enable_wave": )" + on + R"(, "enable_mcs": )" +
              on);
    EXPECT_EQ(StartRun(QString::number(++run)), Success) << value;
    EXPECT_EQ(Status(dumper), 0) << value;
    EXPECT_EQ(Status(scope), 0) << value;
    EXPECT_EQ(Status(rates), 0) << value;
    EXPECT_TRUE(QFileInfo(Path(QString::number(run))).isDir()) << value;
  }
}

TEST_F(RunStorage, AFormatThatIsNoTextIsNone) {
  Configure(R"(, "format": 5, "enable_list": true)");
  ASSERT_EQ(StartRun("1"), Success);
  EXPECT_TRUE(FeedUntil(events, Event, [this] { return Status(dumper) == 0; }));
  EXPECT_EQ(log.Lines().filter("Unable to open file  \"" + Path("1/d_0") + "\"").size(), 1);
}

TEST_F(RunStorage, AFilePathThatIsNoTextIsEmpty) {
  for (const char* value : {"5", "null", R"(["/tmp"])"}) {
    log.Clear();
    vendor.ClearCalls();
    WriteConfiguration(R"({"storage": {"file_path": )" + QByteArray(value) + "}}");
    EXPECT_EQ(StartRun(RunInTheRoot().mid(1)), Success) << value;
    EXPECT_TRUE(WasFolderWanted(RunInTheRoot())) << value;
    EXPECT_EQ(vendor.Calls(), RestartCalls) << value;
    QDir().rmdir(RunInTheRoot());
  }
}

TEST_F(RunStorage, AConfigurationFileThatIsGoneReadsAsOneWithoutStorageSettings) {
  Configure(EverythingEnabled);
  ASSERT_EQ(StartRun("1"), Success);
  Tell(R"({"cmd": "stop_dump"})");
  vendor.ClearCalls();
  ASSERT_TRUE(QFile::remove(ConfigurationPath()));
  EXPECT_EQ(StartRun(RunInTheRoot().mid(1)), Success);
  EXPECT_TRUE(WasFolderWanted(RunInTheRoot()));
  EXPECT_EQ(vendor.Calls(), RestartCalls);
  EXPECT_EQ(Status(dumper), 0);
  EXPECT_EQ(Status(scope), 0);
  EXPECT_EQ(Status(rates), 0);
  QDir().rmdir(RunInTheRoot());
}

TEST_F(RunStorage, TheFolderIsMadeBeforeSourcesAreRestartedAndRecordersAreStartedAfterThem) {
  Configure(EverythingEnabled);
  QStringList seen;
  vendor.onCommand = [&] {
    seen << QStringLiteral("folder %1, recorders %2 %3 %4")
                .arg(QFileInfo(Path("12")).isDir())
                .arg(Status(dumper))
                .arg(Status(scope))
                .arg(Status(rates));
  };
  ASSERT_EQ(StartRun("12"), Success);
  ASSERT_EQ(vendor.Calls(), RestartCalls);
  for (const QString& state : seen) {
    EXPECT_EQ(state, "folder 1, recorders 0 0 0");
  }
  EXPECT_EQ(seen.size(), RestartCalls.size());
  EXPECT_EQ(Status(dumper), 1);
  EXPECT_EQ(Status(scope), 1);
  EXPECT_EQ(Status(rates), 1);
}

}  // namespace
