#include "framework/WorkerThread.h"

namespace korvax {

WorkerThread::WorkerThread(const KorvaxBlock::InputPins& inputs) : inputs_(inputs) {}

WorkerThread::~WorkerThread() {
  Q_ASSERT(!isRunning());
}

void WorkerThread::Wake() {
  const Lock lock(mutex_);
  wake_.wakeAll();
}

void WorkerThread::Stop() {
  {
    const Lock lock(mutex_);
    stopping_.store(true, std::memory_order_relaxed);
    wake_.wakeAll();
  }
  wait();
  HappensAfter(this);
}

bool WorkerThread::WaitForWake() {
  Lock lock(mutex_);
  if (!stopping_.load(std::memory_order_relaxed)) {
    lock.Wait(wake_);
  }
  return !stopping_.load(std::memory_order_relaxed);
}

void WorkerThread::Drain() {
  for (;;) {
    DataMessage message;
    if (inputs_.front()->Pop(message) != PinInput::Taken) {
      break;
    }
    Consume(std::move(message));
  }
  AfterDrain();
}

void WorkerThread::run() {
  while (WaitForWake()) {
    Drain();
  }
  Drain();
  Finish();
  HappensBefore(this);
}

}  // namespace korvax
