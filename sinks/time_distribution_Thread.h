#pragma once

#include "sinks/CountGrid.h"
#include "sinks/HistogramShape.h"
#include "sinks/SinkThread.h"

/// Counts energy events into one histogram per channel by their timestamps. A histogram without bins or channels
/// discards them.
class time_distribution_Thread final : public korvax::SinkThread {
public:
  time_distribution_Thread(const KorvaxBlock::InputPins& inputs, korvax::HistogramShape shape);

  /// Width of a bin in timestamp units. At 0, as at first, every event drops out. Main thread.
  void SetBinning(double binning);
  /// To be read only; a reading may mix the counts from before and after a message.
  const korvax::CountGrid& Counts() const { return counts_; }

protected:
  bool HasRoom() const override { return !counts_.IsEmpty(); }
  korvax::Fates Count(const PayloadBatch& batch) override;
  void Clear() override { counts_.Reset(); }

private:
  /// Whether the event has a bin.
  bool CountEvent(const KorvaxPayload_Energy& event);

  // Guarded by Mutex().
  double binning_ = 0.0;
  korvax::CountGrid counts_;  // read without the lock: counters are atomics
};
