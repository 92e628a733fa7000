#include "framework/PinOutput.h"

namespace {

quint64 RecordsIn(const DataMessage& message) {
  return message.batch == nullptr ? 0 : message.batch->Size();
}

}  // namespace

PinOutput::PinOutput(const QString& name, QObject* parent) : QObject(parent), name_(name) {}

PinOutput::~PinOutput() {
  while (!queue_.IsEmpty()) {
    queue_.TakeFirst().batch.release();  // kept: see the declaration
  }
}

bool PinOutput::Push(DataMessage&& message) {
  DataMessage owned = std::move(message);
  const quint64 records = RecordsIn(owned);
  // Read without the lock: only this producer makes the queue longer, so it can't pass the limit.
  if (size_.load(std::memory_order_relaxed) >= Limit) {
    const korvax::Lock lock(mutex_);
    counts_.dropped += records;
    return false;
  }
  int size = 0;
  {
    const korvax::Lock lock(mutex_);
    queue_.Append(std::move(owned));
    size = static_cast<int>(queue_.Size());
    size_.store(size, std::memory_order_relaxed);
    counts_.pushed += records;
    counts_.waiting += records;
    acceptedMessages_.fetch_add(1, std::memory_order_relaxed);
  }
  const korvax::SignalCrossing crossing(*this);
  emit NewDataPushedInPin(size);
  return true;
}

bool PinOutput::Take(DataMessage& out) {
  const korvax::Lock lock(mutex_);
  if (queue_.IsEmpty()) {
    return false;
  }
  out = queue_.TakeFirst();
  size_.store(static_cast<int>(queue_.Size()), std::memory_order_relaxed);
  const quint64 records = RecordsIn(out);
  counts_.taken += records;
  counts_.waiting -= records;
  return true;
}

PinCounts PinOutput::Counts() const {
  const korvax::Lock lock(mutex_);
  return counts_;
}
