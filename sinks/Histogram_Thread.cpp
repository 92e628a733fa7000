#include "sinks/Histogram_Thread.h"

#include "sinks/BinIndex.h"

using korvax::Fate;

Histogram_Thread::Histogram_Thread(const KorvaxBlock::InputPins& inputs, korvax::HistogramShape shape)
    : SinkThread(inputs, When::Running, {Fate::Counted, Fate::Cut}), counts_(shape.channels, shape.bins) {}

void Histogram_Thread::SetGain(double gain) {
  const korvax::Lock lock(Mutex());
  gain_ = gain;
}

void Histogram_Thread::SetCuts(double min, double max) {
  const korvax::Lock lock(Mutex());
  cutMin_ = min;
  cutMax_ = max;
}

korvax::Fates Histogram_Thread::Count(const PayloadBatch& batch) {
  const Binning binning{gain_, cutMin_, cutMax_, counts_.Rows(), counts_.Columns()};
  return korvax::CountEvents(batch, Fate::Cut, [&](const auto& event) { return CountEvent(event, binning); });
}

bool Histogram_Thread::CountEvent(const KorvaxPayload_Energy& event, const Binning& binning) {
  const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(event.energyRaw * binning.gain), binning.bins);
  const qint32 channel = korvax::ClampIndex(static_cast<qint32>(event.channel), binning.channels);
  const double index = bin;
  const bool counts = binning.cutMin <= index && index <= binning.cutMax;
  if (counts) {
    counts_.Count(channel, bin);
  }
  return counts;
}
