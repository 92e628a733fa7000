#pragma once

#include <QSocketNotifier>

#include <memory>

/// While one exists, the first SIGINT, SIGTERM or SIGHUP ends the event loop with status 0, so that workers finish
/// what they hold; a second SIGINT or SIGTERM ends the process at once, as any does before; further SIGHUPs are
/// ignored, also after its life. One object in a process, main thread.
class TerminationSignals {
public:
  TerminationSignals();
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
  std::unique_ptr<QSocketNotifier> notifier_;
};
