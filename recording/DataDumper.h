#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "recording/DataDumper_Thread.h"

/// Records the event stream of a run to list files, and reports on the run.
class DataDumper : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  DataDumper(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~DataDumper() override;

  void StopWorker() override;
  const korvax::Account* Records() const override { return &worker_->Records(); }

  /// ConfigureDump and StartDump in one, for run control: the worker sees both or none.
  void StartRun(const korvax::DumpSettings& settings);
  /// Whether a file of a run is still open: a stop takes effect at the next data.
  bool HasOpenFile() const { return worker_->Control().HasOpenFile(); }
  QueryReach Reach() const override { return QueryReach::ByName; }

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  /// Messages that wait in the input pin.
  int FifoLevel() const;
  void InterpretMessage(QString* data_in, QString* data_out) override;
  void ConfigureDump(int dump_events, const QString& file_type, const QString& file_path);
  /// Begins a run: all counts from 0. A file that is still open goes on.
  void StartDump(const QString& run_id);
  void StopDump();
  void PauseDump();
  /// Appends the run information, one JSON object.
  void GetRunInfo(QString* out) const;
  /// Goes on recording; the counts are kept.
  void ReStartDump();

private:
  void AppendCounts(QString& out) const;

  std::unique_ptr<DataDumper_Thread> worker_;
};
