#include "sinks/Histogram_Thread.h"

#include "framework/KorvaxPayload_Energy.h"
#include "sinks/BinIndex.h"

Histogram_Thread::Histogram_Thread(const KorvaxBlock::InputPins& inputs, qint32 bins, qint32 channels)
    : WorkerThread(inputs), counts_(channels, bins) {}

void Histogram_Thread::SetCuts(double min, double max) {
  cutMin_.store(min, std::memory_order_relaxed);
  cutMax_.store(max, std::memory_order_relaxed);
}

void Histogram_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  if (batch == nullptr || counts_.IsEmpty() || !IsRunning()) {
    return;
  }
  const Rule rule{gain_.load(std::memory_order_relaxed), cutMin_.load(std::memory_order_relaxed),
                  cutMax_.load(std::memory_order_relaxed)};
  for (const auto& record : batch->records) {
    if (const auto* event = korvax::PayloadCast<KorvaxPayload_Energy>(record.get())) {
      CountEvent(*event, rule);
    }
  }
}

void Histogram_Thread::CountEvent(const KorvaxPayload_Energy& event, const Rule& rule) {
  const qint32 bin =
      korvax::ClampIndex(korvax::TruncateToBin(event.energyRaw * rule.gain), counts_.Bins());
  const qint32 channel = korvax::ClampIndex(static_cast<qint32>(event.channel), counts_.Channels());
  const double index = bin;
  if (rule.cutMin <= index && index <= rule.cutMax) {
    counts_.Count(channel, bin);
  }
}
