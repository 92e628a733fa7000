#pragma once

#include "framework/ByteWriter.h"
#include "framework/Clock.h"
#include "framework/KorvaxPayload_RateCounters.h"
#include "recording/DumpControl.h"
#include "recording/RunFile.h"

#include <span>

namespace korvax {

/// Writes rate records to the one rate file of a run. Needs no thread of its own; one thread at a time.
class RateRecorder {
public:
  /// The control and the clock outlive the recorder.
  RateRecorder(const QString& blockName, DumpControl& control, const Clock& clock = Clock::System());

  /// The rate records of one container, by the order that holds now.
  void Take(std::span<const KorvaxPayload_RateCounters* const> records);

  /// Closes the file, if one is open.
  void Finish();

private:
  void Record(std::span<const KorvaxPayload_RateCounters* const> records, const DumpOrder& order);
  void OpenFile(const DumpSettings& settings, FileForm form);
  void Append(const KorvaxPayload_RateCounters& record, FileForm form);

  const QString blockName_;
  DumpControl& control_;
  const Clock& clock_;
  StopWatch runTimer_;  // since the file was opened

  RunFile file_;
  ByteWriter buffer_;
  quint64 stopsSeen_ = 0;
  bool fileOpenNeeded_ = true;
};

}  // namespace korvax
