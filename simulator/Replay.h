#pragma once

#include "simulator/EventFeed.h"
#include "simulator/Status.h"

#include <string>
#include <vector>

namespace korvax::sim {

// The hits of a binary list file, in the order of the file; board keV energies, which such a file doesn't
// hold, are 0. A record cut off at the end is left out. With status Ok there is at least one hit, else
// the status is CannotReadFile or NoListFile. Holds the file in memory, sizeof(Hit) for each.
Status LoadHits(const std::string& path, std::vector<Hit>& hits);

// Recorded hits as a feed. A hit is due as long after the first one as it was recorded, divided by the
// speed, and never before its forerunner; at speed 0 all are due at once. When looping, timestamps of each
// round lie behind those of the round before by the span from the earliest to the latest, plus 1.
class Replay : public EventFeed {
public:
  // `hits` isn't empty.
  Replay(std::vector<Hit> hits, double speed, bool loop);

  std::uint64_t NextDue() override;
  Hit Take() override;
  void Restart() override;

private:
  const std::vector<Hit> hits_;
  const double speed_;
  const bool loop_;
  std::uint64_t span_ = 0;
  std::size_t next_ = 0;
  std::uint64_t shift_ = 0;   // span of the rounds gone by
  std::uint64_t latest_ = 0;  // highest timestamp so far
};

}  // namespace korvax::sim
