#pragma once

#include "sinks/CountGrid.h"
#include "sinks/HistogramShape.h"
#include "sinks/SinkThread.h"

/// Counts energy events into one histogram per channel. A histogram without bins or channels discards them.
class Histogram_Thread final : public korvax::SinkThread {
public:
  Histogram_Thread(const KorvaxBlock::InputPins& inputs, korvax::HistogramShape shape);

  // Main thread.
  void SetGain(double gain);
  /// Lowest and highest bin that counts.
  void SetCuts(double min, double max);
  /// To be read only; a reading may mix the counts from before and after a message.
  const korvax::CountGrid& Counts() const { return counts_; }

protected:
  bool HasRoom() const override { return !counts_.IsEmpty(); }
  korvax::Fates Count(const PayloadBatch& batch) override;
  void Clear() override { counts_.Reset(); }

private:
  // Read once a batch.
  struct Binning {
    double gain;
    double cutMin;
    double cutMax;
    qint32 channels;
    qint32 bins;
  };

  /// Whether the event is inside the cuts.
  bool CountEvent(const KorvaxPayload_Energy& event, const Binning& binning);

  // Guarded by Mutex().
  double gain_ = 1.0;
  double cutMin_ = 0.0;
  double cutMax_ = 4294967295.0;
  korvax::CountGrid counts_;  // read without the lock: counters are atomics
};
