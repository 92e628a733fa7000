#include "framework/PinOutput.h"

#include <algorithm>

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

std::size_t PinOutput::PushAll(std::span<DataMessage> messages) {
  // Read without the lock: only this producer makes the queue longer, so it can't pass the limit.
  const auto room = static_cast<std::size_t>(Limit - size_.load(std::memory_order_relaxed));
  const std::size_t accepted = std::min(messages.size(), room);
  if (accepted < messages.size()) {
    Drop(messages.subspan(accepted));
  }
  if (accepted > 0) {
    const int last = Append(messages.first(accepted));
    const korvax::SignalCrossing crossing(*this);
    for (int size = last - static_cast<int>(accepted) + 1; size <= last; ++size) {
      emit NewDataPushedInPin(size);
    }
  }
  return accepted;
}

// Returns the queue's size.
int PinOutput::Append(std::span<DataMessage> messages) {
  const korvax::Lock lock(mutex_);
  for (DataMessage& message : messages) {
    const quint64 records = RecordsIn(message);
    counts_.pushed += records;
    counts_.waiting += records;
    queue_.Append(std::move(message));
  }
  const auto size = static_cast<int>(queue_.Size());
  size_.store(size, std::memory_order_relaxed);
  acceptedMessages_.fetch_add(messages.size(), std::memory_order_relaxed);
  return size;
}

void PinOutput::Drop(std::span<DataMessage> messages) {
  quint64 records = 0;
  for (DataMessage& message : messages) {
    records += RecordsIn(message);
    message = {};
  }
  const korvax::Lock lock(mutex_);
  counts_.dropped += records;
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
