#pragma once

#include "framework/WorkerThread.h"
#include "sinks/ChannelHistogram.h"

class KorvaxPayload_Energy;

/// Counts energy events into one histogram per channel. A histogram without bins or channels discards them.
class Histogram_Thread final : public korvax::WorkerThread {
public:
  Histogram_Thread(const KorvaxBlock::InputPins& inputs, qint32 bins, qint32 channels);

  // Main thread. Each waits for the message that is being counted, so that it holds for every event counted after
  // it returns.
  void SetGain(double gain);
  void SetCuts(double min, double max);
  void SetRunning(bool running);
  void ResetCounts();

  bool IsRunning() const;
  /// To be read only; a reading may mix the counts from before and after a message.
  const korvax::ChannelHistogram& Counts() const { return counts_; }

protected:
  void Consume(DataMessage&& message) override;

private:
  struct Settings {
    double gain = 1.0;
    double cutMin = 0.0;
    double cutMax = 4294967295.0;
    bool running = false;
  };
  void CountEvent(const KorvaxPayload_Energy& event, const Settings& settings);

  mutable QMutex mutex_;             // taken once per message
  Settings settings_;                // guarded by mutex_
  korvax::ChannelHistogram counts_;  // written under mutex_, read without
};
