#include "sinks/Histogram_Thread.h"

#include "framework/KorvaxPayload_Energy.h"
#include "sinks/BinIndex.h"

Histogram_Thread::Histogram_Thread(const KorvaxBlock::InputPins& inputs, qint32 bins, qint32 channels)
    : WorkerThread(inputs), counts_(channels, bins) {}

void Histogram_Thread::SetGain(double gain) {
  const korvax::Lock lock(mutex_);
  settings_.gain = gain;
}

void Histogram_Thread::SetCuts(double min, double max) {
  const korvax::Lock lock(mutex_);
  settings_.cutMin = min;
  settings_.cutMax = max;
}

void Histogram_Thread::SetRunning(bool running) {
  const korvax::Lock lock(mutex_);
  settings_.running = running;
}

bool Histogram_Thread::IsRunning() const {
  const korvax::Lock lock(mutex_);
  return settings_.running;
}

void Histogram_Thread::ResetCounts() {
  const korvax::Lock lock(mutex_);
  counts_.Reset();
}

void Histogram_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  if (batch == nullptr || counts_.IsEmpty()) {
    return;
  }
  const korvax::Lock lock(mutex_);
  if (!settings_.running) {
    return;
  }
  for (const auto& record : batch->records) {
    if (const auto* event = korvax::PayloadCast<KorvaxPayload_Energy>(record.get())) {
      CountEvent(*event, settings_);
    }
  }
}

void Histogram_Thread::CountEvent(const KorvaxPayload_Energy& event, const Settings& settings) {
  const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(event.energyRaw * settings.gain), counts_.Bins());
  const qint32 channel = korvax::ClampIndex(static_cast<qint32>(event.channel), counts_.Channels());
  const double index = bin;
  if (settings.cutMin <= index && index <= settings.cutMax) {
    counts_.Count(channel, bin);
  }
}
