#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "sinks/Position_Thread.h"

namespace korvax {
struct SinkQuery;
}

/// The position map: for pairs of channels that see the two ends of one detector strip, counts strip × place along
/// it ("heatmap"), and shows recent points ("scatter"). Counts nothing until a client sets it running.
class Position : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  Position(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~Position() override;

  /// "energy_cut_min" and "energy_cut_max" reach the running worker at its next message; "positions",
  /// "correlated_channels" and "y_positions" are fixed at construction. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  void SetCut(double& cut, double value);
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out);
  void AppendScatter(korvax::ByteWriter& out);
  void AppendHeatmap(korvax::ByteWriter& out) const;

  korvax::StripWiring wiring_;
  korvax::EnergyWindow window_;
  qint32 rows_ = 256;
  std::unique_ptr<Position_Thread> worker_;  // absent only while the constructor reads the configuration
};
