#pragma once

#include "framework/Clock.h"
#include "framework/WorkerThread.h"
#include "processing/OrderBuffer.h"

/// What the configuration says about sorting. Kept: stored and never consulted, the thresholds are fixed.
struct SortingSettings {
  qint32 windows = 0;           ///< "n_windows"
  double timestampDelta = 0.0;  ///< "timestamp_delta", without its fraction
};

/// Holds events back until late ones have caught up, and passes them on in groups of close timestamps.
class Time_Sorting_Thread final : public korvax::WorkerThread {
public:
  Time_Sorting_Thread(const KorvaxBlock::InputPins& inputs, const KorvaxBlock::OutputPins& outputs,
                      const QString& blockName, const SortingSettings& settings,
                      const korvax::Clock& clock = korvax::Clock::System());

  const SortingSettings& Settings() const { return settings_; }

protected:
  void Consume(DataMessage&& message) override;
  void AfterDrain() override;
  void Finish() override;
  quint64 Waiting() const override { return buffer_.Size(); }

private:
  void TakeIn(const PayloadBatch& batch);
  void TakeInRecord(const KorvaxPayload& record);
  void Gather(std::unique_ptr<PayloadBatch> group);
  void EmitGathered();

  const KorvaxBlock::OutputPins& outputs_;
  const QString blockName_;
  const SortingSettings settings_;
  const korvax::Clock& clock_;

  // Worker.
  korvax::OrderBuffer buffer_;
  DataMessage envelope_;  // the last message's texts and words, without a batch
  quint64 now_ = 0;       // µs since 1970-01-01 UTC, of the last message
  std::vector<DataMessage> groups_;
  quint64 gathered_ = 0;  // records in groups_
  bool strangersLogged_ = false;
};
