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
  korvax::Fates fates;
  if (counts_.IsEmpty()) {
    return fates;
  }
  const Binning binning{gain_, cutMin_, cutMax_, counts_.Rows(), counts_.Columns()};
  quint64 cut = 0;
  const std::size_t events = korvax::ForEachEvent(
      batch, [&](const KorvaxPayload_Energy& event) { cut += CountEvent(event, binning) ? 0U : 1U; });
  fates[Fate::Cut] = cut;
  fates[Fate::Counted] = events - cut;
  return fates;
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
