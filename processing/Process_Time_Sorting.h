#pragma once

#include "framework/KorvaxBlock.h"
#include "processing/Time_Sorting_Thread.h"

/// Puts energy events into the order of their timestamps and passes them on in coincidence groups.
class Process_Time_Sorting : public KorvaxBlock {
  Q_OBJECT

public:
  Process_Time_Sorting(QObject* parent, const ChainContext& context, const QJsonValue& block,
                       const korvax::Clock& clock = korvax::Clock::System());
  ~Process_Time_Sorting() override;

  /// "n_windows" and "timestamp_delta"; fixed at construction. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;
  const korvax::Account* Records() const override { return &worker_->Records(); }

  const SortingSettings& Settings() const { return worker_->Settings(); }

public slots:
  void NewDataInTheInputPin(int FifoLevel);

private:
  SortingSettings settings_;
  std::unique_ptr<Time_Sorting_Thread> worker_;
};
