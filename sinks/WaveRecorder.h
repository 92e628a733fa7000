#pragma once

#include "framework/KorvaxPayload_Waves.h"
#include "recording/RunRecorder.h"
#include "sinks/TraceStore.h"

namespace korvax {

/// Writes the stored traces to wave files, at most one record in every dump time.
class WaveRecorder final : public RunRecorder {
public:
  /// All outlive the recorder.
  WaveRecorder(const QString& blockName, DumpControl& control, const TraceStore& store,
               const Clock& clock = Clock::System());

  /// One message by the order that holds now: its first waves, already in the store, and how many further ones it
  /// has, which aren't recorded. Null for a message without waves, which can only end a dump.
  void Take(const KorvaxPayload_Waves* first, quint64 further);

private:
  void Record(const KorvaxPayload_Waves& waves, const DumpOrder& order);
  bool OpenWaveFile(const DumpOrder& order);
  void Append(const KorvaxPayload_Waves& waves, FileForm form);

  const TraceStore& store_;
  StopWatch interval_;
};

}  // namespace korvax
