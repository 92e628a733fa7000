#pragma once

#include "framework/WorkerThread.h"
#include "sinks/WaveRecorder.h"

/// Keeps the latest traces and records them while a run is taken.
class Oscilloscope_Thread final : public korvax::WorkerThread {
public:
  Oscilloscope_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName, korvax::TraceShape shape);

  korvax::DumpControl& Control() { return control_; }
  /// Never changes.
  const korvax::TraceShape& Shape() const { return store_.Shape(); }
  bool IsTooLarge() const { return store_.IsTooLarge(); }

  /// Copies of slots of the store, all of one waveform; empty for a slot that isn't there. Any thread.
  std::vector<std::vector<double>> Traces(const std::vector<qint64>& slotNumbers) const;

protected:
  void Consume(DataMessage&& message) override;
  void Finish() override { recorder_.Finish(); }

private:
  korvax::DumpControl control_;
  mutable QMutex mutex_;
  korvax::TraceStore store_;       // written by the worker under mutex_, read by others under it
  korvax::WaveRecorder recorder_;  // worker
};
