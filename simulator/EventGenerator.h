#pragma once

#include "simulator/DetectorModel.h"
#include "simulator/EventFeed.h"

#include <queue>
#include <vector>

namespace korvax::sim {

struct GeneratorSettings {
  std::uint32_t channels = 8;
  double rate = 20000.0;  // hits per second, all channels together
  RadioactiveSource source = RadioactiveSource::Cs137;
  std::uint64_t seed = 1;
  double gain = ChannelGain::DefaultRawPerKeV;
  double coincidence = 0.2;        // share of the hits that have a partner, 0 to 1
  std::uint32_t disorder = 10000;  // ns; no hit is read out later than this after it happened
};

// Hits of a detector array at Poisson times. The sequence depends on the settings alone: not on when
// hits are taken, and not on the wall clock.
//
// Channels are read out after delays of their own, so timestamps of different channels come out of order,
// by at most `disorder`; those of one channel stay in order. Coincident hits fall on the channels 2k and
// 2k + 1, at most 60 ns apart.
//
// The first flag tells that the hit before on the same channel was less than PileUpNs ago, the second that
// the raw energy is saturated.
class EventGenerator : public EventFeed {
public:
  static constexpr double MaxCoincidenceNs = 60.0;
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
  void MakeSingle();
  Hit MakeHit(std::uint32_t channel, double timeNs, double keV) const;
  std::uint64_t DueTime(const Hit& hit) const { return hit.timestamp + delays_[hit.channel]; }
  void Queue(const Hit& hit) { pending_.push({DueTime(hit), made_++, hit}); }

  const GeneratorSettings settings_;
  const DetectorModel model_;
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
