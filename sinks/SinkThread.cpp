#include "sinks/SinkThread.h"

namespace korvax {

void SinkThread::SetRunning(bool running) {
  const Lock lock(mutex_);
  running_ = running;
}

bool SinkThread::IsRunning() const {
  const Lock lock(mutex_);
  return running_;
}

void SinkThread::Reset() {
  const Lock lock(mutex_);
  Clear();
}

void SinkThread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);  // dies after the lock
  if (batch == nullptr) {
    return;
  }
  const Lock lock(mutex_);
  if (running_ || countsWhen_ == When::Always) {
    Count(*batch);
  }
}

}  // namespace korvax
