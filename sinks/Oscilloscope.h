#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "sinks/Oscilloscope_Thread.h"

/// Shows the latest waveform of every channel, and records waveforms while a run is taken.
class Oscilloscope : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  Oscilloscope(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~Oscilloscope() override;

  /// "sample_number", "ch_number", "ch_analog" and "ch_digital"; fixed at construction. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;
  const korvax::Account* Records() const override { return &worker_->Records(); }
  QJsonObject Shape() const override;

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
  void ConfigureDump(int dump_events, int dump_time, const QString& file_type, const QString& file_path);
  /// Begins a run: all counts from 0. A file that is still open goes on.
  void StartDump(const QString& run_id);
  void StopDump();
  void PauseDump();
  void ReStartDump();

private:
  void EnableChannels(const QJsonArray& switches);
  std::vector<qint64> ShownSlots() const;
  void AppendTraces(QString& out) const;

  korvax::TraceShape shape_;
  std::vector<bool> enabled_;  // channels that a client asked for
  std::unique_ptr<Oscilloscope_Thread> worker_;
};
