#pragma once

#include "sinks/Position.h"
#include "tests/support/LogCapture.h"
#include "tests/unit/sinks/SinkFixture.h"

namespace test {

/// A position map with its worker, and the log lines of rejected pairs.
class PositionSink : public Sink<Position> {
public:
  using Sink::Sink;

  QString Heatmap() { return Data("heatmap"); }
  QString Scatter() { return Data("scatter"); }
  /// Consumes a message of one pair and its log lines.
  template <typename... Events>
  [[nodiscard]] bool ConsumeGroup(Events... events) {
    return Consume(std::move(events)...) && Consume();
  }
  int Rejected() const { return log_.Count("Discrding energy"); }
  QStringList LogLines() const { return log_.Lines(); }

private:
  const LogCapture log_;
};

/// Two channels that see one strip, and four rows unless the test needs others.
inline Parameters OneStrip(const char* rows = "4") {
  return {{"positions", "[0,0]"}, {"correlated_channels", "[1,0]"}, {"y_positions", rows}};
}

}  // namespace test
