#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "recording/SinkRateCounter_Thread.h"

#include <QStringList>

/// Keeps the latest rate records for clients and records them while a run is taken.
class SinkRateCounter : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  /// "history_depth" may be at most this.
  static constexpr qint32 DeepestHistory = 100'000;

  SinkRateCounter(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~SinkRateCounter() override;

  /// "channel_map", names of the channels for clients, and "history_depth", read at construction only. Always
  /// true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;
  const korvax::Account* Records() const override { return &worker_->Records(); }
  QJsonObject Shape() const override;

  void ConfigureDump(int dump_events, const QString& file_type, const QString& file_path);
  /// Begins a run: all counts from 0. A file that is still open goes on.
  void StartDump(const QString& run_id);
  void StopDump();
  void PauseDump();
  void ReStartDump();
  /// ConfigureDump and StartDump in one, for run control: the worker sees both or none.
  void StartRun(const korvax::DumpSettings& settings);
  /// Whether a file of a run is still open: a stop takes effect at the next data.
  bool HasOpenFile() const { return worker_->Control().HasOpenFile(); }

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  /// Messages that wait in the input pin.
  int FifoLevel() const;
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  void SetChannelMap(const QJsonArray& names);
  void ControlDump(const QString& command, const QJsonObject& message, QString& out);
  void AppendData(const QString& source, QString& out) const;

  qint32 historyDepth_ = 600;
  QStringList channelMap_;
  std::unique_ptr<SinkRateCounter_Thread> worker_;
};
