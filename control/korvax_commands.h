#pragma once

#include "control/RunBook.h"
#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

#include <QJsonObject>

class Source;

/// Run control: starts, stops and resets acquisition, takes runs with every recording block at once, switches high
/// voltage. Keeps no state of its own but the summary
/// of the run; the configuration file is read again at every start of a run. Main thread.
class korvax_commands : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  /// The context's block list outlives this block, which acts on all blocks that are in it when a query comes.
  korvax_commands(QObject* parent, const ChainContext& context);
  QueryReach Reach() const override { return QueryReach::ByName; }

public slots:
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  bool Obey(const QString& command);
  /// The first block of the name in the message must be a source.
  QString TellSource(const QJsonObject& message, void (Source::*operation)()) const;
  QString StartDump(const QJsonObject& message);
  bool HasOpenFiles() const;
  void RestartAcquisition() const;
  void AppendRunInfo(QString& out) const;
  /// Of all blocks, or of the one that the message names.
  void AppendLedger(const QJsonObject& message, QString& out) const;
  void TellHighVoltage(const QString& message) const;

  korvax::RunBook book_;
};
