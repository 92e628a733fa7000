#pragma once

#include "acquisition/Source.h"
#include "boards/DigitizerBoard.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/RawBlock.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <mutex>

/// Answers reads one by one: a read waits until the test has said what it finds, so that the test knows what
/// the worker has done and not yet done.
class ReadScript {
public:
  using Answer = std::function<std::int32_t(void* holder)>;

  void Next(Answer answer) {
    const std::lock_guard lock(mutex_);
    answers_.push_back(std::move(answer));
    changed_.notify_all();
  }

  /// From now on every read fails at once.
  void Finish() {
    const std::lock_guard lock(mutex_);
    finished_ = true;
    changed_.notify_all();
  }

  /// Forgets everything, for the next source.
  void Restart() {
    const std::lock_guard lock(mutex_);
    answers_.clear();
    begun_ = 0;
    finished_ = false;
  }

  /// How many reads have begun. When it is n + 1, the cycles of the first n reads are over, pauses included.
  int Begun() const {
    const std::lock_guard lock(mutex_);
    return begun_;
  }

  std::int32_t Read(void* holder) {
    Answer answer;
    {
      std::unique_lock lock(mutex_);
      ++begun_;
      changed_.wait(lock, [this] { return finished_ || !answers_.empty(); });
      if (answers_.empty()) {
        return -1;
      }
      answer = std::move(answers_.front());
      answers_.pop_front();
    }
    return answer(holder);
  }

private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Answer> answers_;
  int begun_ = 0;
  bool finished_ = false;
};

/// A board "det" with an enabled endpoint "energy", a disabled one "wave", and two commands of each type on
/// both; sources on it.
class SourceFixture : public testing::Test {
protected:
  SourceFixture() {
    vendor_.onRead = [this](void* holder) { return reads_.Read(holder); };
    AddBoard("det");
  }

  ~SourceFixture() override { EndSource(); }

  void EndSource() {
    reads_.Finish();
    if (source_) {
      source_->StopWorker();
      while (HasMessage()) {  // a pin that ends leaves its batches alone
      }
      source_.reset();
    }
    reads_.Restart();
  }

  void AddBoard(const char* name) {
    boards_.push_back(std::make_unique<DigitizerBoard>(vendor_.Lookup()));
    boards_.back()->name = name;
    boards_.back()->LoadEndpoints(test::Object(
        R"({"endpoints": [{"name": "energy", "path": "\\e", "enable": true}, {"name": "wave", "path": "\\w"}]})"));
    QJsonArray commands;
    for (const char* endpoint : {"energy", "wave"}) {
      for (const char* type : {"config", "start", "stop", "reset"}) {
        for (const char* number : {"1", "2"}) {
          commands << QJsonObject{{"command_type", type},
                                  {"endpoint_type", endpoint},
                                  {"path", QString("%1-%2-%3").arg(type, endpoint, number)}};
        }
      }
    }
    boards_.back()->LoadCommands({{"commands", commands}});
  }

  /// A source's configuration; `pin` such as "endpoints\\energy".
  static QJsonObject Configuration(const char* dataType, const char* pin, const char* board = "det") {
    return {{"name", "src"},
            {"data_type", dataType},
            {"sources", QJsonArray{QJsonObject{{"pin", pin}, {"source", board}}}},
            {"parameters", QJsonArray{QJsonObject{{"param_name", "download_interval"}, {"param_value", 0}}}}};
  }

  Source& Make(const QJsonObject& configuration) {
    source_ = std::make_unique<Source>(nullptr, ChainContext{&boards_, nullptr, "processing/0/x", "c.json"},
                                       configuration);
    return *source_;
  }

  /// A source without a pause, running.
  Source& MakeRunning(const char* dataType, const char* pin = "endpoints\\energy") {
    Make(Configuration(dataType, pin)).Run();
    return *source_;
  }

  bool SetParameter(const char* name, const QJsonValue& value) {
    return source_->ParseParameters(
        QJsonObject{{"parameters", QJsonArray{QJsonObject{{"param_name", name}, {"param_value", value}}}}});
  }

  /// The next read finds the block, which outlives the source.
  void Feed(const test::RawBlock& block) {
    reads_.Next([&block](void* holder) {
      block.FillHolder(holder);
      return 0;
    });
  }

  [[nodiscard]] bool WaitForReads(int begun) {
    return test::WaitFor([this, begun] { return reads_.Begun() >= begun; });
  }

  /// The next message of the source's pin; without a batch when none comes.
  DataMessage NextMessage() {
    DataMessage message;
    EXPECT_TRUE(test::WaitFor([&] { return source_->Outputs().front()->Take(message); }));
    return message;
  }

  bool HasMessage() {
    DataMessage message;
    return source_->Outputs().front()->Take(message);
  }

  static test::Bytes EnergyRecord(quint64 timestamp, quint32 channel, quint32 raw) {
    return test::Bytes().U64(timestamp).U32(channel).U32(raw).F64(0.25).U8(0).U8(0).Unused(2).U32(0);
  }

  test::FakeVendor vendor_;
  test::LogCapture log_;
  ReadScript reads_;
  BoardList boards_;
  std::unique_ptr<Source> source_;
};
