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
      model_(settings.source),
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
    MakeSingle();
  }
}

void EventGenerator::MakeSingle() {
  const std::uint32_t channel = random_.Below(settings_.channels);
  Queue(MakeHit(channel, nextDecayNs_, model_.DrawEnergy(random_)));
}

void EventGenerator::MakePair() {
  const std::uint32_t even = 2 * random_.Below(settings_.channels / 2);
  const std::uint32_t first = even + random_.Below(2);
  const double distance = random_.Uniform(0.0, MaxCoincidenceNs);
  Hit a = MakeHit(first, nextDecayNs_, model_.DrawSignal(random_));
  Hit b = MakeHit(first ^ 1U, nextDecayNs_ + distance, model_.DrawSignal(random_));
  if (DueTime(a) <= DueTime(b)) {
    TellPartner(b, a);
  } else {
    TellPartner(a, b);
  }
  Queue(a);
  Queue(b);
}

Hit EventGenerator::MakeHit(std::uint32_t channel, double timeNs, double keV) const {
  Hit hit;
  hit.timestamp = static_cast<std::uint64_t>(timeNs);
  hit.channel = channel;
  hit.energyKeV = keV;
  hit.energyRaw = gains_[channel].ToRaw(keV);
  hit.secondFlag = hit.energyRaw == ChannelGain::Saturated ? 1 : 0;
  return hit;
}

}  // namespace korvax::sim
