#pragma once

#include <QString>

namespace korvax::client {

/// How korvaxctl ends. Scripts read these numbers: they stay as they are.
enum class ExitCode {
  Ok = 0,
  OutputFailed = 1,  ///< the answer could not be written to standard output
  Usage = 2,         ///< the command line can't be understood
  Unreachable = 3,   ///< no server at the address, or it went away before it answered
  EmptyAnswer = 4,   ///< empty answer: no such block, as far as can be told
  NoAnswer = 5,      ///< the server took the query and stayed silent
  BadAnswer = 6,     ///< the answer is not of the shape that the command needs
  UnknownQuery = 7,  ///< the block is there but has no answer to this query
  BadFile = 8,       ///< a file is not as it should be, or can't be read
  Refused = 9,       ///< the server, or korvaxctl itself, refused to do it
  NotBalanced = 10,  ///< an account of records doesn't balance
};

/// An exit code with the words that explain it; no words where none are needed.
struct Ending {
  ExitCode code = ExitCode::Ok;
  QString text;
};

/// The server can't be reached at `address`; `reason` is the network's own wording.
Ending UnreachableEnding(const QString& address, const QString& reason);

/// The connection to `address` ended while an answer was due.
Ending ClosedEnding(const QString& address);

/// No answer came from `address` within `seconds`.
Ending NoAnswerEnding(const QString& address, double seconds);

/// The answer was empty. `byPath` tells which of the two routes `target` was sought on.
Ending EmptyAnswerEnding(const QString& target, bool byPath);

/// The block with the full path `path` answers other queries, but not this one.
Ending UnknownQueryEnding(const QString& path);

/// The block with the full path `path` is there but doesn't hold what was to be drawn.
Ending OtherKindEnding(const QString& path);

/// `what` is wrong with `answer`, of which the message shows the beginning.
Ending BadAnswerEnding(const QString& target, const QString& what, const QString& answer);

/// The block left `channel` out of its answer, as it does with channels that it doesn't have.
Ending NoChannelEnding(const QString& target, int channel);

}  // namespace korvax::client
