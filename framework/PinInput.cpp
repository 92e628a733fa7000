#include "framework/PinInput.h"

PinInput::PinInput(const QString& name, QObject* parent) : QObject(parent), name_(name) {}

void PinInput::Connect(PinOutput* upstream) {
  upstream_.store(upstream, std::memory_order_release);
  QObject::connect(upstream, &PinOutput::NewDataPushedInPin, this, &PinInput::NewDataInTheOutputPin);
}

int PinInput::Pop(DataMessage& out) {
  PinOutput* const upstream = upstream_.load(std::memory_order_acquire);
  if (upstream == nullptr) {
    return Unlinked;
  }
  DataMessage taken;
  {
    const korvax::Lock lock(mutex_);
    if (!upstream->Take(taken)) {
      return Empty;
    }
    const quint64 records = taken.batch == nullptr ? 0 : taken.batch->Size();
    takenRecords_.store(takenRecords_.load(std::memory_order_relaxed) + records, std::memory_order_relaxed);
  }
  out = std::move(taken);  // what `out` held before dies here, outside the locks
  return Taken;
}

void PinInput::NewDataInTheOutputPin(int FifoLevel) {
  emit DataReady(FifoLevel);
}

int PinInput::Level() const {
  const PinOutput* const upstream = Upstream();
  return upstream == nullptr ? 0 : upstream->Level();
}

quint64 PinInput::AcceptedMessages() const {
  const PinOutput* const upstream = Upstream();
  return upstream == nullptr ? 0 : upstream->AcceptedMessages();
}

quint64 PinInput::DroppedRecords() const {
  const PinOutput* const upstream = Upstream();
  return upstream == nullptr ? 0 : upstream->DroppedRecords();
}
