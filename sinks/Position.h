#pragma once

#include "sinks/AnalysisSink.h"
#include "sinks/Position_Thread.h"

/// The position map: for pairs of channels that see the two ends of one detector strip, counts strip × place along
/// it ("heatmap"), and shows recent points ("scatter"). Counts nothing until a client sets it running.
class Position : public korvax::AnalysisSink {
  Q_OBJECT

public:
  Position(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// "energy_cut_min" and "energy_cut_max" reach the running worker at its next message; "positions",
  /// "correlated_channels" and "y_positions" are fixed at construction. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  QJsonObject Shape() const override;

public slots:
  void NewDataInTheInputPin(int FifoLevel) { Wake(FifoLevel); }
  void InterpretMessage(QString* data_in, QString* data_out) override { Answer(*data_in, *data_out); }

protected:
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) override;

private:
  void SetCut(double& cut, double value);
  void AppendScatter(korvax::ByteWriter& out);
  void AppendHeatmap(korvax::ByteWriter& out) const;

  korvax::StripWiring wiring_;
  korvax::EnergyWindow window_;
  qint32 rows_ = 256;
  Position_Thread* worker_ = nullptr;  // the base owns it; null while the constructor reads the configuration
};
