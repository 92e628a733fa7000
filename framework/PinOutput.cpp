#include "framework/PinOutput.h"

PinOutput::PinOutput(const QString& name, QObject* parent) : QObject(parent), name_(name) {}

PinOutput::~PinOutput() {
  for (DataMessage& message : queue_) {
    message.batch.release();  // kept: see the declaration
  }
}

bool PinOutput::Push(DataMessage&& message) {
  DataMessage owned = std::move(message);
  // Read without the lock: only this producer makes the queue longer, so it can't pass the limit.
  if (size_.load(std::memory_order_relaxed) >= Limit) {
    const std::size_t records = owned.batch == nullptr ? 0 : owned.batch->records.size();
    droppedRecords_.fetch_add(records, std::memory_order_relaxed);
    return false;
  }
  int size = 0;
  {
    const korvax::Lock lock(mutex_);
    queue_.push_back(std::move(owned));
    size = static_cast<int>(queue_.size());
    size_.store(size, std::memory_order_relaxed);
    acceptedMessages_.fetch_add(1, std::memory_order_relaxed);
  }
  const korvax::SignalCrossing crossing(*this);
  emit NewDataPushedInPin(size);
  return true;
}

bool PinOutput::Take(DataMessage& out) {
  const korvax::Lock lock(mutex_);
  if (queue_.empty()) {
    return false;
  }
  out = std::move(queue_.front());
  queue_.pop_front();
  size_.store(static_cast<int>(queue_.size()), std::memory_order_relaxed);
  return true;
}
