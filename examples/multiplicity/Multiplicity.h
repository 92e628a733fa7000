#pragma once

#include "sinks/AnalysisSink.h"

/// How many events arrive together: bin n counts the groups of n events, the last bin also those of more. Fed by a
/// time_sorting block.
class Multiplicity : public korvax::AnalysisSink {
  Q_OBJECT

public:
  Multiplicity(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// "bin_number"; fixed at construction. Always true.
  bool ParseParameters(const QJsonValue& block) override;

public slots:
  void NewDataInTheInputPin(int FifoLevel) { Wake(FifoLevel); }
  void InterpretMessage(QString* data_in, QString* data_out) override { Answer(*data_in, *data_out); }

protected:
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) override;

private:
  class Worker;

  qint32 binNumber_ = 0;
  Worker* worker_ = nullptr;  // the base owns it
};
