#pragma once

#include "benchmarks/Result.h"

namespace bench {

// Spectra of 64 channels × 16384 bins that clients ask for over the WebSocket.

/// Clients in a process of their own; each asks for so many channels once an interval.
struct Asking {
  int clients = 0;
  int channels = 0;
  int intervalMs = 0;
};

/// A road that is asked while it runs.
Result ToAskedSpectrum(qint64 blocks, double eventsPerSecond, const Asking& asking);
/// Some seconds of one client that asks for everything as fast as it is answered.
Result AnswerOfSpectrum(qint64 blocks);
/// The same, answered with a text that is ready.
Result AnswerOfReadyText(qint64 blocks);

}  // namespace bench
