#pragma once

#include "sinks/AnalysisSink.h"
#include "sinks/time_distribution_Thread.h"

/// The time distribution: one histogram per channel over timestamp / binning. Counts whatever reaches it, whether
/// a client has set it running or not.
class time_distribution : public korvax::AnalysisSink {
  Q_OBJECT

public:
  time_distribution(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// "binning"; reaches the running worker at its next message. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  QJsonObject Shape() const override;

public slots:
  void NewDataInTheInputPin(int FifoLevel) { Wake(FifoLevel); }
  void InterpretMessage(QString* data_in, QString* data_out) override { Answer(*data_in, *data_out); }

protected:
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) override;

private:
  void SetBinning(double binning);

  double binning_ = 0.0;
  time_distribution_Thread* worker_ =
      nullptr;  // the base owns it; null while the constructor reads the configuration
};
