#include "sinks/Oscilloscope_Thread.h"

Oscilloscope_Thread::Oscilloscope_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName,
                                         korvax::TraceShape shape)
    : WorkerThread(inputs, korvax::RunRecorder::PossibleFates()),
      control_(*inputs.front(), {}),
      store_(shape),
      recorder_(blockName, control_, store_) {}

std::vector<std::vector<double>> Oscilloscope_Thread::Traces(const std::vector<qint64>& slotNumbers) const {
  std::vector<std::vector<double>> traces;
  traces.reserve(slotNumbers.size());
  const korvax::Lock lock(mutex_);
  for (const qint64 slot : slotNumbers) {
    traces.push_back(store_.Slot(slot));
  }
  return traces;
}

void Oscilloscope_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  KorvaxPayload_Waves* first = nullptr;
  quint64 count = 0;
  if (batch != nullptr) {
    for (const auto& record : batch->records) {
      if (record->PayloadKind() == KorvaxPayload::Kind::Waves) {
        first = first == nullptr ? static_cast<KorvaxPayload_Waves*>(record.get()) : first;
        ++count;
      }
    }
  }
  if (first != nullptr) {
    const korvax::Lock lock(mutex_);
    store_.Store(*first);
  }
  recorder_.Take(first, count > 0 ? count - 1 : 0);
  Book(recorder_.TakeFates());
  Book(korvax::Fate::Other, batch == nullptr ? 0 : batch->Size() - count);
}
