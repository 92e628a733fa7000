#include "framework/WorkerThread.h"

namespace korvax {

WorkerThread::WorkerThread(const KorvaxBlock::InputPins& inputs, std::vector<Fate> fates)
    : inputs_(inputs), account_(std::move(fates)) {}

WorkerThread::~WorkerThread() {
  Q_ASSERT(!isRunning());
}

// Without the lock while the worker works, and not for messages that it has already taken: there may be a call for
// each.
void WorkerThread::Wake() {
  if (waits_.load(std::memory_order_acquire) && inputs_.front()->Level() > 0) {
    const Lock lock(mutex_);
    waits_.store(false, std::memory_order_release);  // one call is enough
    wake_.wakeAll();
  }
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
    waits_.store(true, std::memory_order_release);
    lock.Wait(wake_);
    waits_.store(false, std::memory_order_release);
  }
  return !stopping_.load(std::memory_order_relaxed);
}

void WorkerThread::Drain() {
  for (;;) {
    DataMessage message;
    if (inputs_.front()->Pop(message) != PinInput::Taken) {
      break;
    }
    const quint64 received = message.batch == nullptr ? 0 : message.batch->Size();
    Consume(std::move(message));
    PostBooked(received);
  }
  AfterDrain();
  PostBooked(0);
}

void WorkerThread::PostBooked(quint64 received) {
  account_.Book(received, std::exchange(booked_, {}), Waiting());
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
