#include "sinks/Histogram_Thread.h"

#include "sinks/BinIndex.h"

Histogram_Thread::Histogram_Thread(const KorvaxBlock::InputPins& inputs, korvax::HistogramShape shape)
    : SinkThread(inputs, When::Running), counts_(shape.channels, shape.bins) {}

void Histogram_Thread::SetGain(double gain) {
  const korvax::Lock lock(Mutex());
  gain_ = gain;
}

void Histogram_Thread::SetCuts(double min, double max) {
  const korvax::Lock lock(Mutex());
  cutMin_ = min;
  cutMax_ = max;
}

void Histogram_Thread::Count(const PayloadBatch& batch) {
  if (!counts_.IsEmpty()) {
    korvax::ForEachEvent(batch, [this](const KorvaxPayload_Energy& event) { CountEvent(event); });
  }
}

void Histogram_Thread::CountEvent(const KorvaxPayload_Energy& event) {
  const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(event.energyRaw * gain_), counts_.Columns());
  const qint32 channel = korvax::ClampIndex(static_cast<qint32>(event.channel), counts_.Rows());
  const double index = bin;
  if (cutMin_ <= index && index <= cutMax_) {
    counts_.Count(channel, bin);
  }
}
