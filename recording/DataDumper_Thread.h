#pragma once

#include "framework/WorkerThread.h"
#include "recording/ListRecorder.h"

/// Records a run's events. The order to it, and what it reports, go through Control.
class DataDumper_Thread final : public korvax::WorkerThread {
public:
  /// The pins and the clock outlive the worker.
  DataDumper_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName,
                    const korvax::Clock& clock = korvax::Clock::System());

  korvax::DumpControl& Control() { return control_; }

  // Main thread.
  template <typename Change>
  void StartRun(Change change) {
    control_.StartRun([&](korvax::DumpSettings& settings) {
      change(settings);
      statistics_ = {.runStart = clock_.SecondsSinceEpoch()};
    });
  }
  void Pause();
  void ReStart();
  korvax::RunStatistics Statistics() const;

protected:
  void Consume(DataMessage&& message) override;
  void Finish() override { recorder_.Finish(); }

private:
  const korvax::Clock& clock_;
  korvax::DumpControl control_;
  korvax::RunStatistics statistics_;  // guarded by control_
  korvax::ListRecorder recorder_;     // worker
};
