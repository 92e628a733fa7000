#pragma once

#include "benchmarks/Answers.h"
#include "benchmarks/Road.h"

#include <algorithm>

namespace bench {

/// What one round of a road or of what it is compared with took.
struct Result {
  double cpuNs = 0.0;  ///< an event
  double rate = 0.0;   ///< events a second, without those that were lost
  quint64 made = 0;    ///< records; 0 for what isn't a road
  quint64 lost = 0;    ///< of these
  AnswerTimes answers = {};
};

/// Of work without a road.
inline Result ResultOf(const Cost& cost, double events) {
  return {.cpuNs = cost.cpuSeconds / events * 1e9, .rate = events / cost.wallSeconds};
}

/// Of a road whose records stand for so many events each.
inline Result ResultOf(const Passage& passage, double eventsOfARecord = 1.0) {
  Result result = ResultOf(passage.cost, static_cast<double>(passage.made) * eventsOfARecord);
  result.rate *= static_cast<double>(passage.made - passage.lost) / static_cast<double>(passage.made);
  result.made = passage.made;
  result.lost = passage.lost;
  return result;
}

/// Several rounds of the same: the best cost and rate, as other work on the machine only adds to them; but the
/// worst losses and times of answers.
class Rounds {
public:
  void Add(const Result& result) {
    const double lost =
        result.made == 0 ? 0.0 : static_cast<double>(result.lost) / static_cast<double>(result.made);
    if (rounds_ == 0 || lost < leastLost_) {  // what is lost early costs less
      best_ = result;
      leastLost_ = lost;
    } else if (lost == leastLost_) {
      best_.cpuNs = std::min(best_.cpuNs, result.cpuNs);
      best_.rate = std::max(best_.rate, result.rate);
      best_.answers.medianMs = std::min(best_.answers.medianMs, result.answers.medianMs);
    }
    ++rounds_;
    whole_ += result.lost == 0 ? 1 : 0;
    mostLost_ = std::max(mostLost_, lost);
    slowestMs_ = std::max(slowestMs_, result.answers.percentile99Ms);
  }

  /// Of the rounds that lost the least.
  const Result& Best() const { return best_; }
  int Number() const { return rounds_; }
  /// Rounds that lost nothing.
  int Whole() const { return whole_; }
  /// Of the records that were made, in the worst round.
  double MostLost() const { return mostLost_; }
  /// Within this, 99 of 100 answers came in the worst round.
  double SlowestMs() const { return slowestMs_; }

private:
  Result best_;
  int rounds_ = 0;
  int whole_ = 0;
  double leastLost_ = 0.0;
  double mostLost_ = 0.0;
  double slowestMs_ = 0.0;
};

}  // namespace bench
