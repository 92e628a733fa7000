#pragma once

#include "sinks/AnalysisSink.h"
#include "sinks/Histogram_Thread.h"

/// The energy spectrum: one histogram per channel over raw energy × gain. Counts nothing until a client sets it
/// running.
class Histogram : public korvax::AnalysisSink {
  Q_OBJECT

public:
  Histogram(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// "gain", "energy_cut_min" and "energy_cut_max"; reach the running worker at its next message. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  QJsonObject Shape() const override;

public slots:
  void NewDataInTheInputPin(int FifoLevel) { Wake(FifoLevel); }
  void InterpretMessage(QString* data_in, QString* data_out) override { Answer(*data_in, *data_out); }

protected:
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) override;

private:
  void SetCut(double& cut, const char* label, double value);

  double gain_ = 1.0;
  double energyCutMin_ = 0.0;
  double energyCutMax_ = 4294967295.0;
  Histogram_Thread* worker_ = nullptr;  // the base owns it; null while the constructor reads the configuration
};
