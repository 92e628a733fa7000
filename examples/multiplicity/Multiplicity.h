#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

/// How many events arrive together: bin n counts the groups of n events, the last bin also those of more. Fed by a
/// time_sorting block.
class Multiplicity : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  Multiplicity(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~Multiplicity() override;

  /// "bin_number"; fixed at construction. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  class Worker;

  qint32 binNumber_ = 0;
  std::unique_ptr<Worker> worker_;
};
