#pragma once

#include "tests/chain/SorterRig.h"

#include <algorithm>
#include <ostream>
#include <random>

namespace test {

/// How recorded events reach a sorter: so many a message, so many messages a drain, so much time between messages.
/// Ranges are drawn from, evenly.
struct Feeding {
  const char* name;
  std::uniform_int_distribution<int> eventsPerMessage;
  std::uniform_int_distribution<int> messagesPerDrain;
  std::uniform_int_distribution<int> stepUs;  ///< negative: the clock was set back
  int events;                                 ///< of the recording, from its beginning
  bool comesLate = false;                     ///< some events come when their group has left
  bool overflows = false;                     ///< some messages find the buffer full
};

inline void PrintTo(const Feeding& feeding, std::ostream* out) {
  *out << feeding.name;
}

/// Cuts events into the portions of a feeding, always the same ones.
class Portions {
public:
  Portions(const Feeding& feeding, const RecordedEvents& events)
      : feeding_(feeding),
        next_(events.begin()),
        end_(events.begin() + std::min<int>(feeding.events, Count(events))) {}

  bool AtEnd() const { return next_ == end_; }
  std::vector<SorterRig::Arrival> Next() {
    std::vector<SorterRig::Arrival> portion;
    for (int i = feeding_.messagesPerDrain(random_); i > 0 && !AtEnd(); --i) {
      const auto last = next_ + std::min<std::ptrdiff_t>(feeding_.eventsPerMessage(random_), end_ - next_);
      now_ += qint64{1000} * feeding_.stepUs(random_);
      portion.push_back({RecordedEvents(next_, last), now_});
      next_ = last;
    }
    return portion;
  }

private:
  static int Count(const RecordedEvents& events) { return static_cast<int>(events.size()); }

  Feeding feeding_;
  RecordedEvents::const_iterator next_;
  const RecordedEvents::const_iterator end_;
  std::mt19937 random_{20260301};
  qint64 now_ = 1'700'000'000'000'000'000;
};

}  // namespace test
