#include "framework/WorkerThread.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>

namespace {

// Notes its steps in order, and the thread of the last one.
class Finisher final : public korvax::WorkerThread {
public:
  explicit Finisher(const KorvaxBlock::InputPins& inputs) : WorkerThread(inputs) {}

  std::string Steps() const { return steps_.Get(); }
  QThread* FinishThread() const { return finishThread_; }

protected:
  void Consume(DataMessage&& /*message*/) override { steps_.Set(steps_.Get() + "consume "); }
  void Finish() override {
    finishThread_ = QThread::currentThread();
    steps_.Set(steps_.Get() + "finish ");
  }

private:
  korvax::Guarded<std::string> steps_;
  std::atomic<QThread*> finishThread_ = nullptr;
};

class AWorkerWithALastWork : public testing::Test {
protected:
  AWorkerWithALastWork() {
    inputs.push_back(std::make_unique<PinInput>("energy"));
    inputs.front()->Connect(&output);
  }
  ~AWorkerWithALastWork() override { worker.Stop(); }

  PinOutput output{"energy"};
  KorvaxBlock::InputPins inputs;
  Finisher worker{inputs};
};

TEST_F(AWorkerWithALastWork, doesItOnceAfterTheLastMessage) {
  output.Push({});
  output.Push({});
  worker.start(korvax::StreamPriority);
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "consume consume finish ");
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "consume consume finish ");
}

TEST_F(AWorkerWithALastWork, doesItOnItsOwnThread) {
  worker.start(korvax::StreamPriority);
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "finish ");
  EXPECT_EQ(worker.FinishThread(), &worker);
}

TEST_F(AWorkerWithALastWork, doesNotDoItBetweenMessages) {
  worker.start(korvax::StreamPriority);
  for (const char* const expected : {"consume ", "consume consume "}) {
    output.Push({});
    ASSERT_TRUE(test::WaitFor([this, expected] {
      worker.Wake();
      return worker.Steps() == expected;
    }));
  }
}

TEST_F(AWorkerWithALastWork, doesNotDoItWhenItNeverRan) {
  worker.Stop();
  EXPECT_EQ(worker.Steps(), "");
}

}  // namespace
