#include "simulator/EventGenerator.h"

#include <algorithm>
#include <utility>

namespace korvax::sim {
namespace {

constexpr std::uint64_t DelayStream = 0x64656c6179000000U;
constexpr std::uint64_t EventStream = 0x6576656e74000000U;

// With probability p per decay a pair, 2p of 1 + p hits have a partner.
double PairProbability(const GeneratorSettings& settings) {
  return settings.channels < 2 ? 0.0 : settings.coincidence / (2.0 - settings.coincidence);
}

void TellPartner(Hit& later, const Hit& earlier) {
  later.completesPair = true;
  later.partnerRaw = earlier.energyRaw;
  later.partnerKeV = earlier.energyKeV;
  later.partnerTimestamp = earlier.timestamp;
}

}  // namespace

EventGenerator::EventGenerator(const GeneratorSettings& settings)
    : settings_(settings),
      array_(MakeDetectorArray(settings)),
      pairProbability_(PairProbability(settings)),
      meanDistanceNs_(1e9 * (1.0 + pairProbability_) / settings.rate),
      random_(settings.seed, EventStream) {
  for (std::uint32_t channel = 0; channel < settings.channels; ++channel) {
    Random delay(settings.seed, DelayStream + channel);
    gains_.emplace_back(settings.seed, channel, settings.gain);
    delays_.push_back(static_cast<std::uint64_t>(delay.Uniform() * settings.disorder));
  }
  Restart();
}

void EventGenerator::Restart() {
  random_ = Random(settings_.seed, EventStream);
  pending_ = {};
  pileUpUntil_.assign(settings_.channels, 0);
  made_ = 0;
  nextDecayNs_ = random_.Exponential(meanDistanceNs_);
}

std::uint64_t EventGenerator::NextDue() {
  Prepare();
  return pending_.top().due;
}

Hit EventGenerator::Take() {
  Prepare();
  Hit hit = pending_.top().hit;
  pending_.pop();
  // Here and not where hits are made: only here those of a channel are in order.
  hit.firstFlag = hit.timestamp < std::exchange(pileUpUntil_[hit.channel], hit.timestamp + PileUpNs) ? 1 : 0;
  return hit;
}

// No decay to come can be read out before its own time, so the first of the pending hits is certain once
// the next decay lies behind it.
void EventGenerator::Prepare() {
  while (pending_.empty() || nextDecayNs_ <= static_cast<double>(pending_.top().due)) {
    MakeDecay();
    nextDecayNs_ += random_.Exponential(meanDistanceNs_);
  }
}

void EventGenerator::MakeDecay() {
  if (random_.Uniform() < pairProbability_) {
    MakePair();
  } else {
    Queue(MakeHit(array_->DrawSingle(random_)));
  }
}

void EventGenerator::MakePair() {
  const std::array<Signal, 2> signals = array_->DrawPair(random_);
  Hit a = MakeHit(signals[0]);
  Hit b = MakeHit(signals[1]);
  if (DueTime(a) <= DueTime(b)) {
    TellPartner(b, a);
  } else {
    TellPartner(a, b);
  }
  Queue(a);
  Queue(b);
}

Hit EventGenerator::MakeHit(const Signal& signal) const {
  Hit hit;
  hit.timestamp = static_cast<std::uint64_t>(nextDecayNs_ + signal.delayNs);
  hit.channel = signal.channel;
  hit.energyKeV = signal.keV;
  hit.energyRaw = gains_[signal.channel].ToRaw(signal.keV);
  hit.secondFlag = hit.energyRaw == ChannelGain::Saturated ? 1 : 0;
  return hit;
}

}  // namespace korvax::sim
