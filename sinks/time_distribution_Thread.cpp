#include "sinks/time_distribution_Thread.h"

#include "sinks/BinIndex.h"

using korvax::Fate;

time_distribution_Thread::time_distribution_Thread(const KorvaxBlock::InputPins& inputs,
                                                   korvax::HistogramShape shape)
    : SinkThread(inputs, When::Always, {Fate::Counted, Fate::OutOfRange}), counts_(shape.channels, shape.bins) {}

void time_distribution_Thread::SetBinning(double binning) {
  const korvax::Lock lock(Mutex());
  binning_ = binning;
}

korvax::Fates time_distribution_Thread::Count(const PayloadBatch& batch) {
  // Kept: counts without "freerun", which only decides the answer to "data_get_status".
  return korvax::CountEvents(batch, Fate::OutOfRange, [this](const auto& event) { return CountEvent(event); });
}

bool time_distribution_Thread::CountEvent(const KorvaxPayload_Energy& event) {
  // Kept: what overflows is dropped here, where the spectrum counts it in bin 0.
  const qint32 bin = korvax::RoundToBin(static_cast<double>(event.timestamp) / binning_);
  if (bin < 0) {
    return false;
  }
  counts_.Count(korvax::ClampIndex(static_cast<qint32>(event.channel), counts_.Rows()),
                korvax::ClampIndex(bin, counts_.Columns()));
  return true;
}
