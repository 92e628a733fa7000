#pragma once

#include "framework/PayloadBatch.h"
#include "recording/RunRecorder.h"
#include "recording/StatFile.h"

namespace korvax {

/// What a dumper reports of its run.
struct RunStatistics {
  double runningTime = 0.0;  ///< s since the run's first file was opened
  double eventRate = 0.0;    ///< per second, over about the last second
  quint64 storedEvents = 0;
  qint64 usedSpace = 0;          ///< bytes of the current data file, not of the run
  qint64 runStart = 0;           ///< s since 1970-01-01 UTC, of the last start or restart
  qint64 pausedRunningTime = 0;  ///< s, whole, at the last pause
};

/// Writes the records of messages to list files, by events per file, and a line of statistics about once a second.
class ListRecorder final : public RunRecorder {
public:
  /// All outlive the recorder; the statistics are guarded by the control.
  ListRecorder(const QString& blockName, DumpControl& control, RunStatistics& statistics,
               const Clock& clock = Clock::System());

  /// One message's batch, by the order that holds now.
  void Take(const PayloadBatch& batch);

private:
  struct Appended {
    qint64 events = 0;    // that the batch stands for
    quint64 written = 0;  // records
    quint64 leftOut = 0;  // records that have no form in the file
  };

  void Record(const PayloadBatch& batch, const DumpOrder& order);
  bool PrepareFile(const DumpOrder& order, qint64 index, FileForm form);
  bool RollOver(const DumpOrder& order, qint64 index, FileForm form);
  bool OpenListFile(const DumpOrder& order, qint64 index, FileForm form);
  Appended Append(const PayloadBatch& batch, FileForm form);
  void Report(const DumpOrder& order, qint64 index, const Appended& appended);
  void UpdateRate(const DumpOrder& order, qint64 index, qint64 events, StatLine line);
  void AppendStatistics(const QString& path, const StatLine& line);
  void EndStatistics();
  void BeforeEnd() override { EndStatistics(); }

  RunStatistics& statistics_;
  StopWatch runTimer_;
  StopWatch rateTimer_;
  StatFile statFile_;  // of the last line; with no path before the first
  bool statHeaderDue_ = false;
  qint64 eventsSinceRate_ = 0;
};

}  // namespace korvax
