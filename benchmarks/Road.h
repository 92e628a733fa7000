#pragma once

#include "framework/ChainContext.h"

#include <QJsonArray>
#include <QString>

#include <functional>

namespace bench {

/// What a stretch of work took.
struct Cost {
  double cpuSeconds = 0.0;  ///< of all threads
  double wallSeconds = 0.0;

  Cost& operator+=(const Cost& more) {
    cpuSeconds += more.cpuSeconds;
    wallSeconds += more.wallSeconds;
    return *this;
  }
};

/// Runs `work` and says what it took, the process's other threads included.
Cost Measure(const std::function<void()>& work);

/// What a road did with the records that it was given.
struct Passage {
  Cost cost;
  quint64 made = 0;  ///< records that the source pushed or lost
  quint64 lost = 0;  ///< at full pins, in a full order buffer, not written, while something was stopped
};

/// A chain of real blocks behind the prepared board: the program without start-up and network.
class Road {
public:
  /// The blocks after the source, as in a configuration. The source is named "source".
  Road(const QString& dataType, const QString& sourceParameters, const QString& blocks);
  ~Road();
  Road(const Road&) = delete;
  Road& operator=(const Road&) = delete;

  const BlockList& Blocks() const { return blocks_; }
  KorvaxBlock& Block(const QString& name) const;
  /// A query to a block of that name; its answer.
  QString Ask(const QString& name, const QString& query) const;

  /// Lets a sink of that name count.
  void StartCounting(const QString& name) const;

  /// Starts the source, runs the event loop until everything that the board hands out has come to rest, and stops
  /// the source. Ends the program when the account doesn't balance then. `meanwhile` is called about once a millisecond.
  Passage Run(const std::function<void()>& meanwhile = {});

private:
  bool IsAtRest() const;
  void Nudge() const;
  quint64 Lost() const;

  BoardList boards_;
  BlockList blocks_;
};

}  // namespace bench
