#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "sinks/time_distribution_Thread.h"

/// The time distribution: one histogram per channel over timestamp / binning. Counts whatever reaches it, whether
/// a client has set it running or not.
class time_distribution : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  time_distribution(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~time_distribution() override;

  /// "binning"; reaches the running worker at its next message. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  void SetBinning(double binning);

  double binning_ = 0.0;
  std::unique_ptr<time_distribution_Thread> worker_;  // absent only while the constructor reads the configuration
};
