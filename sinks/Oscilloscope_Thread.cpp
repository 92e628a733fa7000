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
    const std::span<const double> values = store_.Slot(slot);
    traces.emplace_back(values.begin(), values.end());
  }
  return traces;
}

void Oscilloscope_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  const KorvaxPayload_Waves* first = nullptr;
  quint64 count = 0;
  if (batch != nullptr) {
    for (const auto& record : batch->records) {
      if (const auto* waves = korvax::PayloadCast<KorvaxPayload_Waves>(record.get())) {
        first = first == nullptr ? waves : first;
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
