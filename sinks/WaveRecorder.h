#pragma once

#include "framework/ByteWriter.h"
#include "framework/Clock.h"
#include "framework/KorvaxPayload_Waves.h"
#include "recording/DumpControl.h"
#include "recording/RunFile.h"
#include "sinks/TraceStore.h"

namespace korvax {

/// Writes the stored traces to wave files, at most one record in every dump time. Needs no thread of its own; one
/// thread at a time.
class WaveRecorder {
public:
  /// All outlive the recorder.
  WaveRecorder(const QString& blockName, DumpControl& control, const TraceStore& store,
               const Clock& clock = Clock::System());

  /// One payload by the order that holds now: its first waves, already in the store, and how many further ones it
  /// has, which aren't recorded. Null for a payload without waves, which can only end a dump.
  void Take(const KorvaxPayload_Waves* waves, quint64 further);

  /// Closes the file, if one is open.
  void Finish();

private:
  void Record(const KorvaxPayload_Waves& waves, const DumpOrder& order);
  void OpenFile(const DumpOrder& order);
  void Append(const KorvaxPayload_Waves& waves, FileForm form);

  const QString blockName_;
  DumpControl& control_;
  const TraceStore& store_;
  const Clock& clock_;
  StopWatch interval_;

  RunFile file_;
  ByteWriter buffer_;
  quint64 stopsSeen_ = 0;
  bool fileOpenNeeded_ = true;
  qint64 fileIndex_ = 0;
  qint64 recordsInFile_ = 0;
};

}  // namespace korvax
