#pragma once

#include "simulator/DetectorArray.h"
#include "simulator/EventFeed.h"

#include <queue>
#include <vector>

namespace korvax::sim {

// Hits of a detector array at Poisson times. The sequence depends on the settings alone: not on when
// hits are taken, and not on the wall clock.
//
// Channels are read out after delays of their own, so timestamps of different channels come out of order,
// by at most `disorder`; those of one channel stay in order. Coincident hits fall on the channels 2k and
// 2k + 1, at most 60 ns apart. Which ones, and the energies, is up to the DetectorArray.
//
// The first flag tells that the hit before on the same channel was less than PileUpNs ago, the second that
// the raw energy is saturated.
class EventGenerator : public EventFeed {
public:
  static constexpr std::uint64_t PileUpNs = 1000;

  explicit EventGenerator(const GeneratorSettings& settings);

  std::uint64_t NextDue() override;
  Hit Take() override;
  void Restart() override;

private:
  struct Pending {
    std::uint64_t due;
    std::uint64_t number;  // keeps hits of the same due time in the order in which they were made
    Hit hit;
    bool operator>(const Pending& other) const {
      return due != other.due ? due > other.due : number > other.number;
    }
  };

  void Prepare();
  void MakeDecay();
  void MakePair();
  Hit MakeHit(const Signal& signal) const;
  std::uint64_t DueTime(const Hit& hit) const { return hit.timestamp + delays_[hit.channel]; }
  void Queue(const Hit& hit) { pending_.push({DueTime(hit), made_++, hit}); }

  const GeneratorSettings settings_;
  const std::unique_ptr<const DetectorArray> array_;
  std::vector<ChannelGain> gains_;
  std::vector<std::uint64_t> delays_;
  std::vector<std::uint64_t> pileUpUntil_;  // per channel
  double pairProbability_;
  double meanDistanceNs_;
  Random random_;
  double nextDecayNs_ = 0.0;
  std::uint64_t made_ = 0;
  std::priority_queue<Pending, std::vector<Pending>, std::greater<>> pending_;
};

}  // namespace korvax::sim
