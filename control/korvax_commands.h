#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

#include <QJsonObject>

class Source;

/// Run control: starts, stops and resets acquisition, takes runs with every recording block at once, switches high
/// voltage. Keeps no state of its own; the configuration file is read again at every start of a run. Main thread.
class korvax_commands : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  /// The context's block list outlives this block, which acts on all blocks that are in it when a query comes.
  korvax_commands(QObject* parent, const ChainContext& context);

public slots:
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  /// Null when the first block of that name is no source, or there is none.
  Source* FindSource(const QString& name) const;
  QString Start(const QJsonObject& message);
  QString Stop(const QJsonObject& message);
  QString Reset(const QJsonObject& message);
  QString StartDump(const QJsonObject& message);
  QString StopDump(const QJsonObject& message);
  QString PauseDump(const QJsonObject& message);
  QString RestartDump(const QJsonObject& message);
  QString GetRunInfo(const QJsonObject& message);
  QString HvOn(const QJsonObject& message);
  QString HvOff(const QJsonObject& message);

  void RestartAcquisition() const;
  void SwitchHighVoltage(const QString& command) const;
};
