#pragma once

#include "recording/RateHistory.h"
#include "recording/RunRecorder.h"

#include <span>

namespace korvax {

/// Writes rate records to the one rate file of a run.
class RateRecorder final : public RunRecorder {
public:
  /// The control and the clock outlive the recorder.
  RateRecorder(const QString& blockName, DumpControl& control, const Clock& clock = Clock::System());

  /// The rate records of one message, by the order that holds now.
  void Take(std::span<const RateHistory::Record> records);

private:
  void Record(std::span<const RateHistory::Record> records, const DumpOrder& order);
  void OpenRateFile(const DumpOrder& order, FileForm form);
  void Append(const KorvaxPayload_RateCounters& record, FileForm form);

  StopWatch runTimer_;  // since the file was opened
};

}  // namespace korvax
