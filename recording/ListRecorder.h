#pragma once

#include "framework/ByteWriter.h"
#include "framework/Clock.h"
#include "framework/PayloadBatch.h"
#include "recording/DumpControl.h"
#include "recording/RunFile.h"
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

/// Writes the records of containers to list files, by events per file, and a line of statistics about once a
/// second. Needs no thread of its own; one thread at a time.
class ListRecorder {
public:
  /// All outlive the recorder; the statistics are guarded by the control.
  ListRecorder(const QString& blockName, DumpControl& control, RunStatistics& statistics,
               const Clock& clock = Clock::System());

  /// One container, by the order that holds now.
  void Take(const PayloadBatch& batch);

  /// Closes what is open.
  void Finish();

private:
  void EndRun();
  void Record(const PayloadBatch& batch, const DumpOrder& order);
  bool PrepareFile(const QString& base, const DumpOrder& order, FileForm form);
  bool RollOver(const QString& base, const DumpOrder& order, FileForm form);
  bool OpenFile(const QString& base, FileForm form);
  bool Append(const PayloadBatch& batch, FileForm form, qint64& events);
  void Report(const QString& base, const DumpOrder& order, quint64 records, qint64 events);
  void UpdateRate(const QString& base, const DumpOrder& order, qint64 events, StatLine line);

  const QString blockName_;
  DumpControl& control_;
  RunStatistics& statistics_;
  const Clock& clock_;
  StopWatch runTimer_;
  StopWatch rateTimer_;

  RunFile file_;
  ByteWriter buffer_;
  quint64 stopsSeen_ = 0;
  bool fileOpenNeeded_ = true;  // until the first record of a file
  bool statHeaderDue_ = false;
  qint64 fileIndex_ = 0;
  qint64 eventsInFile_ = 0;
  quint64 recordsInFile_ = 0;
  qint64 eventsSinceRate_ = 0;
};

}  // namespace korvax
