#pragma once

#include "control/MainWebSocket.h"
#include "framework/ChainContext.h"

#include <QProcess>
#include <QString>

namespace bench {

/// How long answers took, over a real WebSocket on loopback.
struct AnswerTimes {
  double medianMs = 0.0;
  double percentile99Ms = 0.0;
  double worstMs = 0.0;
  std::size_t answers = 0;
  qint64 characters = 0;  ///< of the last one
};

/// Clients in a process of their own, so that only the answering is of this one: each of them asks the same again
/// and again, every `intervalMs`, or at once after an answer when that is 0. They are served by this thread's
/// event loop.
class OutsideClients {
public:
  /// Returns when all are connected.
  OutsideClients(const BlockList& blocks, const QString& route, const QString& query, int clients, int intervalMs);

  /// Ends them and returns what they saw.
  AnswerTimes Finish();

private:
  void WaitForLine();

  MainWebSocket server_;
  QProcess process_;
};

/// The other process, when the program is called with "--clients" and what OutsideClients gives it. The exit
/// status.
int RunClients(int argc, char* argv[]);

}  // namespace bench
