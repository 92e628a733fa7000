#include "framework/WorkerThread.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSemaphore>

#include <unistd.h>

#include <atomic>
#include <vector>

namespace {

// Remembers the numbers of the messages that it consumed; a gate can hold it in the midst of one.
class Recorder final : public korvax::WorkerThread {
public:
  explicit Recorder(const KorvaxBlock::InputPins& inputs) : WorkerThread(inputs) {}

  std::vector<quint64> Consumed() const { return consumed_.Get(); }
  std::size_t Count() const { return consumed_.Get().size(); }
  bool IsAtTheGate() const { return atTheGate_; }
  void CloseGate() { gateClosed_ = true; }
  void OpenGate() {
    gateClosed_ = false;
    gate_.release();
  }
  QThread::Priority Priority() const { return priority_; }

  /// The worker sleeps: it has nothing left to do but wait.
  bool IsAsleep() const {
    QFile stat(QStringLiteral("/proc/self/task/%1/stat").arg(id_.load()));
    if (id_ == 0 || !stat.open(QIODevice::ReadOnly)) {
      return false;
    }
    const QByteArray line = stat.readAll();
    return line.mid(line.lastIndexOf(')') + 2, 1) == "S";
  }

protected:
  void run() override {
    id_ = gettid();
    WorkerThread::run();
  }

  void Consume(DataMessage&& message) override {
    priority_ = QThread::currentThread()->priority();
    if (gateClosed_) {
      atTheGate_ = true;
      gate_.acquire();
      atTheGate_ = false;
    }
    std::vector<quint64> consumed = consumed_.Get();
    consumed.push_back(message.word1);
    consumed_.Set(std::move(consumed));
  }

private:
  korvax::Guarded<std::vector<quint64>> consumed_;
  QSemaphore gate_;
  std::atomic<bool> gateClosed_ = false;
  std::atomic<bool> atTheGate_ = false;
  std::atomic<pid_t> id_ = 0;
  std::atomic<QThread::Priority> priority_ = QThread::InheritPriority;
};

class AWorker : public testing::Test {
protected:
  AWorker() {
    inputs.push_back(std::make_unique<PinInput>("energy"));
    inputs.front()->Connect(&output);
  }
  ~AWorker() override { worker.Stop(); }

  void Push(quint64 number) {
    DataMessage message;
    message.word1 = number;
    ASSERT_TRUE(output.Push(std::move(message)));
  }
  bool IsAsleep() {
    return test::WaitFor([this] { return worker.IsAsleep(); });
  }
  // A wake-up before the worker waits is lost, so wake until it is through.
  bool WakeUntilConsumed(std::size_t count) {
    return test::WaitFor([this, count] {
      worker.Wake();
      return worker.Count() == count;
    });
  }

  PinOutput output{"energy"};
  KorvaxBlock::InputPins inputs;
  Recorder worker{inputs};
};

TEST_F(AWorker, consumesNothingBeforeItIsWoken) {
  Push(1);
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(IsAsleep());
  Push(2);
  ASSERT_TRUE(IsAsleep());
  EXPECT_EQ(worker.Count(), 0U);
  EXPECT_TRUE(WakeUntilConsumed(2));
}

TEST_F(AWorker, drainsTheWholeQueueInOrderOnOneWakeUp) {
  for (quint64 i = 0; i < 500; ++i) {
    Push(i);
  }
  worker.CloseGate();
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(test::WaitFor([this] {
    worker.Wake();
    return worker.IsAtTheGate();
  }));
  worker.OpenGate();  // from here on nobody wakes it
  ASSERT_TRUE(test::WaitFor([this] { return worker.Count() == 500; }));
  for (quint64 i = 0; i < 500; ++i) {
    EXPECT_EQ(worker.Consumed()[i], i);
  }
}

TEST_F(AWorker, takesMessagesThatArriveWhileItDrainsInTheSameDrain) {
  Push(1);
  worker.CloseGate();
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(test::WaitFor([this] {
    worker.Wake();
    return worker.IsAtTheGate();
  }));
  Push(2);
  worker.Wake();  // lost: the worker is busy
  Push(3);        // nobody wakes for this one
  worker.OpenGate();
  ASSERT_TRUE(test::WaitFor([this] { return worker.Count() == 3; }));
  EXPECT_EQ(worker.Consumed(), (std::vector<quint64>{1, 2, 3}));
}

TEST_F(AWorker, doesNotRememberAWakeUpThatCameWhileItDrained) {
  Push(1);
  worker.CloseGate();
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(test::WaitFor([this] {
    worker.Wake();
    return worker.IsAtTheGate();
  }));
  worker.Wake();
  worker.OpenGate();
  ASSERT_TRUE(test::WaitFor([this] { return worker.Count() == 1 && worker.IsAsleep(); }));
  Push(2);
  ASSERT_TRUE(IsAsleep());
  EXPECT_EQ(worker.Count(), 1U);
  EXPECT_TRUE(WakeUntilConsumed(2));
}

TEST_F(AWorker, severalWakeUpsForOneMessageConsumeItOnce) {
  worker.start(korvax::StreamPriority);
  Push(1);
  ASSERT_TRUE(WakeUntilConsumed(1));
  for (int i = 0; i < 100; ++i) {
    worker.Wake();
  }
  Push(2);
  ASSERT_TRUE(WakeUntilConsumed(2));
  EXPECT_EQ(worker.Consumed(), (std::vector<quint64>{1, 2}));
}

TEST_F(AWorker, stopConsumesWhatHasReachedThePin) {
  worker.start(korvax::StreamPriority);
  for (quint64 i = 0; i < 1'000; ++i) {
    Push(i);
  }
  worker.Stop();
  EXPECT_TRUE(worker.isFinished());
  EXPECT_EQ(worker.Count(), 1'000U);
}

TEST_F(AWorker, stopWhileItDrainsLosesNothing) {
  Push(1);
  worker.CloseGate();
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(test::WaitFor([this] {
    worker.Wake();
    return worker.IsAtTheGate();
  }));
  Push(2);
  worker.OpenGate();
  worker.Stop();
  EXPECT_EQ(worker.Consumed(), (std::vector<quint64>{1, 2}));
}

TEST_F(AWorker, stopIsHarmlessTwiceAndBeforeTheStart) {
  worker.Stop();
  EXPECT_FALSE(worker.isRunning());
  worker.Stop();
}

TEST_F(AWorker, runsAtTimeCriticalPriority) {
  worker.start(korvax::StreamPriority);
  Push(1);
  ASSERT_TRUE(WakeUntilConsumed(1));
  EXPECT_EQ(worker.Priority(), QThread::TimeCriticalPriority);
}

TEST_F(AWorker, loopsOnWhateverIsFedAndWoken) {
  worker.start(korvax::StreamPriority);
  for (quint64 i = 0; i < 200; ++i) {
    Push(i);
    ASSERT_TRUE(WakeUntilConsumed(i + 1));
  }
}

TEST(AWorkerWithAnUnlinkedPin, findsNothingAndStops) {
  KorvaxBlock::InputPins inputs;
  inputs.push_back(std::make_unique<PinInput>("energy"));
  Recorder worker(inputs);
  worker.start(korvax::StreamPriority);
  ASSERT_TRUE(test::WaitFor([&worker] {
    worker.Wake();
    return worker.IsAsleep();
  }));
  worker.Stop();
  EXPECT_EQ(worker.Count(), 0U);
}

}  // namespace
