#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "sinks/Histogram_Thread.h"

/// The energy spectrum: one histogram per channel over raw energy × gain. Counts nothing until a client sets it
/// running.
class Histogram : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  Histogram(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~Histogram() override;

  /// "gain", "energy_cut_min" and "energy_cut_max"; reach the running worker at its next message. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  void SetCut(double& cut, const char* label, double value);

  double gain_ = 1.0;
  double energyCutMin_ = 0.0;
  double energyCutMax_ = 4294967295.0;
  std::unique_ptr<Histogram_Thread> worker_;  // absent only while the constructor reads the configuration
};
