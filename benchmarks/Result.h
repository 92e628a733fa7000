#pragma once

#include "benchmarks/Answers.h"
#include "benchmarks/Road.h"

namespace bench {

/// What one round of a road or of what it is compared with took.
struct Result {
  double cpuNs = 0.0;  ///< an event
  double rate = 0.0;   ///< events a second, without those that were lost
  quint64 lost = 0;
  bench::AnswerTimes answers = {};
};

/// Of a road.
inline Result ResultOf(const bench::Passage& passage) {
  const auto events = static_cast<double>(passage.made);
  const auto carried = static_cast<double>(passage.made - passage.lost);
  return {passage.cost.cpuSeconds / events * 1e9, carried / passage.cost.wallSeconds, passage.lost, {}};
}

}  // namespace bench
