#pragma once

#include "framework/WorkerThread.h"
#include "recording/RateHistory.h"
#include "recording/RateRecorder.h"

/// Keeps the history of rate records and records them while a run is taken.
class SinkRateCounter_Thread final : public korvax::WorkerThread {
public:
  SinkRateCounter_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName, std::size_t historyDepth);

  korvax::DumpControl& Control() { return control_; }
  korvax::RateHistory& History() { return history_; }

protected:
  void Consume(DataMessage&& message) override;
  void Finish() override { recorder_.Finish(); }

private:
  korvax::DumpControl control_;
  korvax::RateHistory history_;
  korvax::RateRecorder recorder_;  // worker
};
