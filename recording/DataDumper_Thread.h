#pragma once

#include "framework/WorkerThread.h"
#include "recording/ListRecorder.h"

/// Records a run's events. The order to it, and what it reports, go through Control.
class DataDumper_Thread final : public korvax::WorkerThread {
public:
  DataDumper_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName);

  korvax::DumpControl& Control() { return control_; }

  // Main thread.
  void StartRun(const QString& runId);
  void Pause();
  void ReStart();
  korvax::RunStatistics Statistics() const;

protected:
  void Consume(DataMessage&& message) override;
  void Finish() override { recorder_.Finish(); }

private:
  korvax::DumpControl control_;
  korvax::RunStatistics statistics_;  // guarded by control_
  korvax::ListRecorder recorder_;     // worker
};
