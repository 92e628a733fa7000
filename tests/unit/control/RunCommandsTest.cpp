#include "tests/unit/control/RunFixture.h"

namespace {

class RunCommands : public RunFixture {
protected:
  void SetUp() override {
    Configure(EverythingEnabled);
    AddRecorder<DataDumper>("d1", events);
    AddOscilloscope("scope", waves);
    AddRecorder<SinkRateCounter>("rates", rates);
    AddRecorder<DataDumper>("d2", moreEvents);
  }

  /// Feeds each recorder until its file of the run has something in it.
  bool EventsAreRecorded(const QString& run) {
    return FeedUntil(events, Event, [&] { return QFileInfo(Path(run + "/d1_0.csv")).size() > 0; });
  }
  bool WavesAreRecorded(const QString& run) {
    return FeedUntil(waves, Waves, [&] { return QFileInfo(Path(run + "/scope_0.csv")).size() > 0; });
  }
  bool RatesAreRecorded(const QString& run) {
    return FeedUntil(rates, Rates, [&] { return QFileInfo(Path(run + "/rates_0.csv")).size() > 0; });
  }
  /// The status of each dumper, as run information gives it.
  std::vector<int> Statuses() {
    std::vector<int> statuses;
    for (const QJsonValue& run : test::Array(QByteArray::fromStdString(Tell(R"({"cmd": "get_run_info"})")))) {
      statuses.push_back(run.toObject()["status"].toInt());
    }
    return statuses;
  }

  PinOutput events{"energy"};
  PinOutput moreEvents{"energy"};
  PinOutput waves{"waveform"};
  PinOutput rates{"rate_counters"};
};

TEST_F(RunCommands, StartMakesTheFolderRestartsTheSourcesAndStartsEveryRecorder) {
  EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": "12"})"), Success);
  EXPECT_TRUE(QFileInfo(Path("12")).isDir());
  EXPECT_EQ(vendor.Calls(), RestartCalls);
  EXPECT_EQ(Statuses(), (std::vector{1, 1}));
  EXPECT_TRUE(EventsAreRecorded("12"));
  EXPECT_TRUE(WavesAreRecorded("12"));
  EXPECT_TRUE(RatesAreRecorded("12"));
  EXPECT_EQ(log.Count("Starting RATE dumper"), 1);
}

TEST_F(RunCommands, StartMakesMissingParentFoldersToo) {
  WriteConfiguration(R"({"storage": {"file_path": ")" + Path("a/b").toUtf8() + "\"}}");
  EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": "c"})"), Success);
  EXPECT_TRUE(QFileInfo(Path("a/b/c")).isDir());
}

TEST_F(RunCommands, EachKindOfRecorderIsStartedByItsOwnSwitch) {
  struct Row {
    const char* key;
    const char* file;
  };
  const Row rows[] = {{"enable_list", "d1_0.csv"}, {"enable_wave", "scope_0.csv"}, {"enable_mcs", "rates_0.csv"}};
  for (const Row& row : rows) {
    const QString run = row.key;
    Configure(R"(, "format": "CSV", "events_per_file": 1000000, "wavedump_time_interval": -1, ")" +
              QByteArray(row.key) + "\": true");
    EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": ")" + run + "\"}"), Success);
    EXPECT_TRUE(test::WaitFor([&] {
      events.Push(Event());
      waves.Push(Waves());
      rates.Push(Rates());
      return QFileInfo(Path(run + "/" + row.file)).size() > 0 &&
             events.Level() + waves.Level() + rates.Level() == 0;
    }));
    EXPECT_EQ(QDir(Path(run)).entryList({"*_*"}, QDir::Files), QStringList{row.file}) << row.key;
    Tell(R"({"cmd": "stop_dump"})");
  }
}

TEST_F(RunCommands, StorageSettingsAreReadAgainAtEveryStart) {
  Tell(R"({"cmd": "start_dump", "run_id": "1"})");
  EXPECT_TRUE(EventsAreRecorded("1"));
  Tell(R"({"cmd": "stop_dump"})");
  Configure(R"(, "format": "JSON", "enable_list": true)");
  Tell(R"({"cmd": "start_dump", "run_id": "2"})");
  EXPECT_TRUE(FeedUntil(events, Event, [&] { return QFileInfo(Path("2/d1_0.json")).size() > 1; }));
}

TEST_F(RunCommands, AFolderThatExistsIsRefusedAndTheRunThatIsTakenGoesOn) {
  Tell(R"({"cmd": "start_dump", "run_id": "1"})");
  ASSERT_TRUE(EventsAreRecorded("1"));
  vendor.ClearCalls();
  EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": "1"})"), R"([{"response": "Existing Folder"}])");
  EXPECT_TRUE(vendor.Calls().isEmpty());
  EXPECT_EQ(Statuses(), (std::vector{1, 1}));
  const qint64 size = QFileInfo(Path("1/d1_0.csv")).size();
  EXPECT_TRUE(FeedUntil(events, Event, [&] { return QFileInfo(Path("1/d1_0.csv")).size() > size; }));
}

TEST_F(RunCommands, AFolderThatExistsIsRefusedWithoutARunToo) {
  QDir().mkpath(Path("old"));
  EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": "old"})"), R"([{"response": "Existing Folder"}])");
  EXPECT_TRUE(vendor.Calls().isEmpty());
  EXPECT_EQ(Statuses(), (std::vector{0, 0}));
}

TEST_F(RunCommands, ARunIdThatIsNoTextIsEmptyAndMeansTheStorageRootItself) {
  for (const char* message : {R"({"cmd": "start_dump", "run_id": 12})", R"({"cmd": "start_dump"})"}) {
    EXPECT_EQ(Tell(message), R"([{"response": "Existing Folder"}])") << message;
  }
  EXPECT_TRUE(vendor.Calls().isEmpty());
}

TEST_F(RunCommands, WithoutStorageSettingsSourcesAreRestartedAndNothingIsRecorded) {
  const QString run = "korvax-test-" + folder.path().section('/', -1);
  for (const char* text : {"", "no JSON", "[]", R"({"storage": 5})", R"({"Storage": {}})"}) {
    vendor.ClearCalls();
    WriteConfiguration(text);
    EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": ")" + run + "\"}"), Success) << text;
    EXPECT_EQ(vendor.Calls(), RestartCalls) << text;
    EXPECT_EQ(Statuses(), (std::vector{0, 0})) << text;
    QDir().rmdir("/" + run);  // where the tests may write there
  }
}

TEST_F(RunCommands, AFolderThatCannotBeMadeIsLogged) {
  WriteConfiguration(R"({"storage": {"file_path": ")" + ConfigurationPath().toUtf8() + "\"}}");
  EXPECT_EQ(Tell(R"({"cmd": "start_dump", "run_id": "1"})"), Success);
  EXPECT_EQ(log.Count("Unable to create run folder \"" + ConfigurationPath() +
                      "/1\" : nothing will be recorded. Check write permission."),
            1);
}

TEST_F(RunCommands, PauseRestartAndStopReachEveryRecorder) {
  Tell(R"({"cmd": "start_dump", "run_id": "1"})");
  ASSERT_TRUE(EventsAreRecorded("1") && WavesAreRecorded("1") && RatesAreRecorded("1"));
  EXPECT_EQ(Tell(R"({"cmd": "pause_dump"})"), Success);
  EXPECT_EQ(Statuses(), (std::vector{2, 2}));
  const auto discarded = [this](const char* name, const char* message) {
    QString query = message;
    QString answer;
    for (const auto& block : blocks) {
      if (block->Name() == name) {
        dynamic_cast<QueryHandler&>(*block).InterpretMessage(&query, &answer);
      }
    }
    return test::Array(answer.toUtf8())[0].toObject()["discarded"].toInt();
  };
  EXPECT_TRUE(FeedUntil(rates, Rates,
                        [&] { return discarded("rates", R"({"args": [{"cmd": "get_dump_counts"}]})") > 0; }));
  const int skippedWaves = discarded("scope", R"({"cmd": "get_dump_counts"})");
  EXPECT_TRUE(
      FeedUntil(waves, Waves, [&] { return discarded("scope", R"({"cmd": "get_dump_counts"})") > skippedWaves; }));
  const qint64 sizes[] = {QFileInfo(Path("1/scope_0.csv")).size(), QFileInfo(Path("1/rates_0.csv")).size()};

  EXPECT_EQ(Tell(R"({"cmd": "restart_dump"})"), Success);
  EXPECT_EQ(Statuses(), (std::vector{1, 1}));
  EXPECT_TRUE(FeedUntil(waves, Waves, [&] { return QFileInfo(Path("1/scope_0.csv")).size() > sizes[0]; }));
  EXPECT_TRUE(FeedUntil(rates, Rates, [&] { return QFileInfo(Path("1/rates_0.csv")).size() > sizes[1]; }));

  EXPECT_EQ(Tell(R"({"cmd": "stop_dump"})"), Success);
  EXPECT_EQ(Statuses(), (std::vector{0, 0}));
}

TEST_F(RunCommands, RunInformationOfTwoDumpersStandsInOneArray) {
  Tell(R"({"cmd": "start_dump", "run_id": "12"})");
  EXPECT_EQ(
      Tell(R"({"cmd": "get_run_info"})"),
      R"([{"status":1,"name": "d1","event_rate":0,"id":12,"stored_events":0,"running_time":0,"used_space":0},)"
      R"({"status":1,"name": "d2","event_rate":0,"id":12,"stored_events":0,"running_time":0,"used_space":0}])");
}

}  // namespace
