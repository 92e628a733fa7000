#include "framework/WorkerThread.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <QSemaphore>

#include <atomic>
#include <string>
#include <thread>

namespace {

// Notes its steps in order; a gate can hold it in the midst of a message.
class Gatherer final : public korvax::WorkerThread {
public:
  explicit Gatherer(const KorvaxBlock::InputPins& inputs) : WorkerThread(inputs) {}

  std::string Steps() const { return steps_.Get(); }
  QThread* AfterDrainThread() const { return afterDrainThread_; }
  void CloseGate() { gateClosed_ = true; }
  bool IsAtTheGate() const { return atTheGate_; }
  void OpenGate() {
    gateClosed_ = false;
    gate_.release();
  }

protected:
  void Consume(DataMessage&& /*message*/) override {
    if (gateClosed_) {
      atTheGate_ = true;
      gate_.acquire();
    }
    steps_.Set(steps_.Get() + "consume ");
  }
  void AfterDrain() override {
    afterDrainThread_ = QThread::currentThread();
    steps_.Set(steps_.Get() + "after ");
  }
  void Finish() override { steps_.Set(steps_.Get() + "finish "); }

private:
  korvax::Guarded<std::string> steps_;
  QSemaphore gate_;
  std::atomic<bool> gateClosed_ = false;
  std::atomic<bool> atTheGate_ = false;
  std::atomic<QThread*> afterDrainThread_ = nullptr;
};

class AWorkerWithWorkAfterItsDrain : public testing::Test {
protected:
  AWorkerWithWorkAfterItsDrain() {
    inputs.push_back(std::make_unique<PinInput>("energy"));
    inputs.front()->Connect(&output);
  }
  ~AWorkerWithWorkAfterItsDrain() override { worker.Stop(); }

  PinOutput output{"energy"};
  KorvaxBlock::InputPins inputs;
  Gatherer worker{inputs};
};

TEST_F(AWorkerWithWorkAfterItsDrain, doesItOnceForAllMessagesOfADrain) {
  output.Push({});
  output.Push({});
  output.Push({});
  worker.start(korvax::StreamPriority);
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "consume consume consume after finish ");
}

TEST_F(AWorkerWithWorkAfterItsDrain, doesItBeforeTheLastWorkEvenWithoutAMessage) {
  worker.start(korvax::StreamPriority);
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "after finish ");
}

TEST_F(AWorkerWithWorkAfterItsDrain, takesWhatArrivesMeanwhileBeforeIt) {
  output.Push({});
  worker.CloseGate();
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(test::WaitFor([this] {
    worker.Wake();
    return worker.IsAtTheGate();
  }));
  output.Push({});
  worker.OpenGate();
  ASSERT_TRUE(test::WaitFor([this] { return worker.Steps() == "consume consume after "; }));
}

TEST_F(AWorkerWithWorkAfterItsDrain, doesItAfterEveryDrain) {
  worker.start(korvax::StreamPriority);
  for (const char* steps : {"consume after ", "consume after consume after "}) {
    output.Push({});
    ASSERT_TRUE(test::WaitFor([&] {
      worker.Wake();
      return worker.Steps() == steps;
    }));
  }
}

TEST_F(AWorkerWithWorkAfterItsDrain, isNotWokenForMessagesThatItHasTaken) {
  worker.start(korvax::StreamPriority);
  for (int i = 0; i < 10'000; ++i) {
    worker.Wake();
    std::this_thread::yield();
  }
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "after finish ");
}

TEST_F(AWorkerWithWorkAfterItsDrain, doesItOnItsOwnThread) {
  worker.start(korvax::StreamPriority);
  worker.Stop();
  EXPECT_EQ(worker.AfterDrainThread(), &worker);
}

}  // namespace
