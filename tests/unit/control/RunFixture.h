#pragma once

#include "acquisition/Source.h"
#include "boards/DigitizerBoard.h"
#include "control/korvax_commands.h"
#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"
#include "recording/DataDumper.h"
#include "recording/SinkRateCounter.h"
#include "sinks/Oscilloscope.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/control/AnsweringBlock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Run control over two sources "s1" and "s2" of one board and whatever recorders a test adds, with a
/// configuration file of its own. What the board is told is in vendor.Calls().
class RunFixture : public testing::Test {
protected:
  RunFixture() {
    auto board = std::make_unique<DigitizerBoard>(vendor.Lookup());
    board->name = "det";
    const QJsonObject entry = test::Object(R"({
      "endpoints": [{"name": "one", "enable": true}, {"name": "two", "enable": true}],
      "commands": [
        {"path": "start1", "command_type": "start", "endpoint_type": "one"},
        {"path": "stop1", "command_type": "stop", "endpoint_type": "one"},
        {"path": "reset1", "command_type": "reset", "endpoint_type": "one"},
        {"path": "start2", "command_type": "start", "endpoint_type": "two"},
        {"path": "stop2", "command_type": "stop", "endpoint_type": "two"},
        {"path": "reset2", "command_type": "reset", "endpoint_type": "two"}]})");
    board->LoadEndpoints(entry);
    board->LoadCommands(entry);
    boards.push_back(std::move(board));
    AddSource("s1", "one");
    AddSource("s2", "two");
  }

  ~RunFixture() override {
    while (!blocks.empty()) {
      blocks.pop_back();
    }
  }

  /// Before anything that a test linked the workers to is gone.
  void TearDown() override {
    for (const auto& block : blocks) {
      block->StopWorker();
    }
  }

  template <typename Block, typename... Arguments>
  Block& Add(Arguments&&... arguments) {
    auto block = std::make_unique<Block>(std::forward<Arguments>(arguments)...);
    Block& added = *block;
    blocks.push_back(std::move(block));
    return added;
  }

  void AddSource(const char* name, const char* endpoint) {
    Add<Source>(nullptr, Context(),
                test::Object(QStringLiteral(R"({"name": "%1", "data_type": "energy",
                                               "sources": [{"source": "det", "pin": "endpoints\\%2"}]})")
                                 .arg(QLatin1String(name), QLatin1String(endpoint))
                                 .toUtf8()));
  }

  /// A recorder of that name whose input pin is linked to `feed`.
  template <typename Recorder>
  Recorder& AddRecorder(const char* name, PinOutput& feed, const QJsonArray& parameters = {}) {
    auto& recorder = Add<Recorder>(nullptr, Context(), QJsonObject{{"name", name}, {"parameters", parameters}});
    recorder.Inputs().front()->Connect(&feed);
    return recorder;
  }
  Oscilloscope& AddOscilloscope(const char* name, PinOutput& feed) {
    return AddRecorder<Oscilloscope>(name, feed, test::Array(R"([{"param_name": "sample_number", "param_value": 1},
                                                     {"param_name": "ch_number", "param_value": 1},
                                                     {"param_name": "ch_analog", "param_value": 1}])"));
  }

  ChainContext Context() const { return {&boards, &blocks, "processing/0/x", ConfigurationPath()}; }

  QString Path(const QString& name) const { return folder.filePath(name); }
  QString ConfigurationPath() const { return Path("configuration.json"); }
  void WriteConfiguration(const QByteArray& text) const {
    QFile file(ConfigurationPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
  }
  /// A "storage" section with the root of this test and the further keys.
  void Configure(const QByteArray& keys) const {
    WriteConfiguration(R"({"storage": {"file_path": ")" + folder.path().toUtf8() + "\"" + keys + "}}");
  }
  static constexpr const char* EverythingEnabled =
      R"(, "format": "CSV", "events_per_file": 1000000, "wavedump_time_interval": -1,
          "enable_list": true, "enable_wave": true, "enable_mcs": true)";

  static constexpr const char* Success = R"([{"response": true}])";
  /// What the board is told when both sources are restarted.
  const QStringList RestartCalls = {"command stop1", "command reset1", "command start1",
                                    "command stop2", "command reset2", "command start2"};

  std::string Tell(const QString& message) {
    QString query = message;
    QString answer;
    Commands().InterpretMessage(&query, &answer);
    return answer.toStdString();
  }
  korvax_commands& Commands() {
    if (commands_ == nullptr) {
      commands_ = &Add<korvax_commands>(nullptr, Context());
      commands_->SetName("commands");
    }
    return *commands_;
  }

  /// Pushes one message after the other until the condition holds: a wake-up may be lost.
  template <typename MakeMessage>
  static bool FeedUntil(PinOutput& feed, MakeMessage make, const std::function<bool()>& condition) {
    return test::WaitFor([&] {
      feed.Push(make());
      return condition();
    });
  }
  static DataMessage Waves() {
    auto waves = std::make_unique<KorvaxPayload_Waves>();
    waves->samplesPerWave = 1;
    return test::MessageOf(std::move(waves));
  }
  static DataMessage Rates() { return test::MessageOf(std::make_unique<KorvaxPayload_RateCounters>(1)); }
  static DataMessage Event() { return test::MessageOf(test::Energy(1, 2, 3)); }

  test::FakeVendor vendor;
  test::LogCapture log;
  QTemporaryDir folder;
  BoardList boards;
  BlockList blocks;

private:
  korvax_commands* commands_ = nullptr;
};
