#pragma once

#include "framework/WorkerThread.h"
#include "sinks/ChannelHistogram.h"

class KorvaxPayload_Energy;

/// Counts energy events into one histogram per channel. A histogram without bins or channels discards them.
class Histogram_Thread final : public korvax::WorkerThread {
public:
  Histogram_Thread(const KorvaxBlock::InputPins& inputs, qint32 bins, qint32 channels);

  // Main thread; each counts from the next message on.
  void SetGain(double gain) { gain_.store(gain, std::memory_order_relaxed); }
  void SetCuts(double min, double max);
  void SetRunning(bool running) { running_.store(running, std::memory_order_relaxed); }
  bool IsRunning() const { return running_.load(std::memory_order_relaxed); }

  korvax::ChannelHistogram& Counts() { return counts_; }

protected:
  void Consume(DataMessage&& message) override;

private:
  struct Rule {
    double gain;
    double cutMin;
    double cutMax;
  };
  void CountEvent(const KorvaxPayload_Energy& event, const Rule& rule);

  korvax::ChannelHistogram counts_;  // counted by the worker, read and reset by the main thread

  // Written by the main thread, read by the worker once per message.
  std::atomic<double> gain_ = 1.0;
  std::atomic<double> cutMin_ = 0.0;
  std::atomic<double> cutMax_ = 4294967295.0;
  std::atomic<bool> running_ = false;
};
