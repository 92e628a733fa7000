#include "framework/WorkerThread.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

namespace {

TEST(AWorkerThatPassesOn, keepsTheRecordsAlive) {
  struct Relay final : korvax::WorkerThread {
    Relay(const KorvaxBlock::InputPins& from, PinOutput& to) : WorkerThread(from), to_(to) {}
    void Consume(DataMessage&& message) override { to_.Push(std::move(message)); }
    PinOutput& to_;
  };
  PinOutput first("energy");
  PinOutput second("energy");
  KorvaxBlock::InputPins inputs;
  inputs.push_back(std::make_unique<PinInput>("energy"));
  inputs.front()->Connect(&first);
  bool destroyed = false;
  first.Push(test::MessageOf(test::Watched([&destroyed] { destroyed = true; })));
  Relay relay(inputs, second);
  relay.start(korvax::StreamPriority);
  relay.Stop();
  EXPECT_FALSE(destroyed);
  DataMessage message;
  ASSERT_TRUE(second.Take(message));
  message.batch.reset();
  EXPECT_TRUE(destroyed);
}

TEST(AWorkerThatKeepsNothing, destroysTheRecordsOnItsOwnThread) {
  struct Sink final : korvax::WorkerThread {
    using WorkerThread::WorkerThread;
    explicit Sink(const KorvaxBlock::InputPins& from) : WorkerThread(from) {}
    void Consume(DataMessage&& message) override { const DataMessage end = std::move(message); }
  };
  PinOutput output("energy");
  KorvaxBlock::InputPins inputs;
  inputs.push_back(std::make_unique<PinInput>("energy"));
  inputs.front()->Connect(&output);
  QThread* destroyer = nullptr;
  output.Push(test::MessageOf(test::Watched([&destroyer] { destroyer = QThread::currentThread(); })));
  Sink sink(inputs);
  sink.start(korvax::StreamPriority);
  sink.Stop();
  EXPECT_EQ(destroyer, &sink);
}

}  // namespace
