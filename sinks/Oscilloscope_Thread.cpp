#include "sinks/Oscilloscope_Thread.h"

Oscilloscope_Thread::Oscilloscope_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName,
                                         korvax::TraceShape shape)
    : WorkerThread(inputs), control_(*inputs.front(), {}), store_(shape), recorder_(blockName, control_, store_) {}

std::vector<double> Oscilloscope_Thread::Trace(qint64 slot) const {
  const korvax::Lock lock(mutex_);
  const std::span<const double> values = store_.Slot(slot);
  return {values.begin(), values.end()};
}

void Oscilloscope_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  if (batch == nullptr) {
    return;
  }
  const KorvaxPayload_Waves* waves = nullptr;
  quint64 further = 0;
  for (const auto& record : batch->records) {
    const auto* candidate = korvax::PayloadCast<KorvaxPayload_Waves>(record.get());
    if (waves == nullptr) {
      waves = candidate;
    } else if (candidate != nullptr) {
      ++further;
    }
  }
  if (waves != nullptr) {
    const korvax::Lock lock(mutex_);
    store_.Store(*waves);
  }
  recorder_.Take(waves, further);
}
