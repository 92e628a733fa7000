#include "simulator/Detector.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace korvax::sim {

Detector::Detector(std::unique_ptr<EventFeed> feed, const DetectorSettings& settings,
                   const ChannelSwitches& switches, Clock clock)
    : settings_(settings), switches_(switches), clock_(clock), feed_(std::move(feed)), time_(clock) {
  numbers_.assign(switches_.Count(), 0);
  ClearCounters();
}

void Detector::Start(Stream stream) {
  const std::lock_guard lock(mutex_);
  SetStarted(stream, true);
  if (Governs(stream) && std::exchange(fresh_[static_cast<std::size_t>(stream)], false)) {
    Restart();  // the first hits are then the same whatever else ran before
  }
  if (stream == Stream::Counters) {
    inAtStart_ = in_;
    outAtStart_ = out_;
    nextCounters_ = clock_();
  }
  wake_.notify_all();
}

void Detector::Stop(Stream stream) {
  const std::lock_guard lock(mutex_);
  SetStarted(stream, false);
}

void Detector::Reset(Stream stream) {
  const std::lock_guard lock(mutex_);
  Advance(Backlog::IsLost);  // what has happened so far happened with the counters and queues as they were
  if (stream == Stream::Counters) {
    ClearCounters();
  } else if (Governs(stream)) {
    Restart();
    fresh_[static_cast<std::size_t>(stream)] = !Started(stream);
  } else {
    pairs_.clear();
  }
  wake_.notify_all();
}

ReadResult Detector::Read(Stream stream, std::int32_t timeoutMs) {
  std::unique_lock lock(mutex_);
  return ReadWithin(lock, wake_, timeoutMs, [&] {
    if (!Started(stream)) {
      return Attempt{};
    }
    return stream == Stream::Counters ? AttemptCounters() : AttemptHits(stream);
  });
}

bool Detector::Governs(Stream stream) const {
  return stream == Stream::Energy || (stream == Stream::Pairs && !Started(Stream::Energy));
}

void Detector::SetStarted(Stream stream, bool started) {
  Advance(Backlog::IsLost);
  started_[static_cast<std::size_t>(stream)] = started;
  time_.SetRunning(ShouldRun());
}

bool Detector::ShouldRun() const {
  const bool forCounters = Started(Stream::Counters) && !settings_.lossless;
  return Started(Stream::Energy) || Started(Stream::Pairs) || forCounters;
}

void Detector::Restart() {
  timeBeforeRestart_ += time_.Now();
  time_.Reset();
  feed_->Restart();
  jumpedNs_ = 0;
  numbers_.assign(switches_.Count(), 0);
  energy_.clear();
  pairs_.clear();
}

void Detector::ClearCounters() {
  const std::size_t channels = switches_.Count() + (settings_.t0Rate > 0.0 ? 1 : 0);
  for (auto* counts : {&in_, &out_, &inAtStart_, &outAtStart_}) {
    counts->assign(channels, 0);
  }
  t0Cleared_ = T0Pulses();
}

void Detector::Advance(Backlog backlog) {
  CountT0();
  inBefore_ = in_;
  const std::uint64_t now = FeedTime();
  const std::uint64_t first = feed_->NextDue();
  std::size_t taken = 0;
  while (taken < MostAtOnce && MayTake() && feed_->NextDue() <= now) {
    Deliver(feed_->Take());
    ++taken;
  }
  if (taken == MostAtOnce && !settings_.lossless) {
    JumpBacklog(first, backlog == Backlog::Waits ? Room() : 0);
  }
}

void Detector::CountT0() {
  if (settings_.t0Rate > 0.0) {
    in_.back() = out_.back() = T0Pulses() - t0Cleared_;
  }
}

// The feed's sequence isn't thinned but goes on later: between hits at Poisson times a gap can be anywhere.
void Detector::JumpBacklog(std::uint64_t first, std::size_t room) {
  const std::uint64_t now = FeedTime();
  const std::uint64_t next = feed_->NextDue();
  if (next > now || next <= first) {
    return;
  }
  const auto behind = static_cast<double>(now - next);
  const auto sampled = static_cast<double>(next - first);
  const double kept = sampled * static_cast<double>(room) / static_cast<double>(MostAtOnce);
  const double jumped = std::max(0.0, std::floor(behind - kept));
  jumpedNs_ += static_cast<std::uint64_t>(jumped);
  for (std::size_t channel = 0; channel < numbers_.size(); ++channel) {
    const auto seen = static_cast<double>(in_[channel] - inBefore_[channel]);
    const auto lost = static_cast<std::uint64_t>(std::llround(seen * jumped / sampled));
    in_[channel] += lost;
    numbers_[channel] += lost;
  }
}

std::size_t Detector::Room() const {
  const std::size_t energies = Started(Stream::Energy) ? settings_.queue - energy_.size() : 0;
  const std::size_t pairs = Started(Stream::Pairs) ? settings_.queue - pairs_.size() : 0;
  return std::max(energies, pairs);
}

// A lossless feed waits for the reader of the energy endpoint.
bool Detector::MayTake() const {
  return !settings_.lossless ? ShouldRun() : Started(Stream::Energy) && energy_.size() < settings_.block;
}

void Detector::Deliver(Hit hit) {
  if (!switches_.Sees(hit.channel, hit.energyRaw)) {
    return;
  }
  ++in_[hit.channel];
  hit.number = static_cast<std::uint32_t>(++numbers_[hit.channel]);
  hit.timestamp += jumpedNs_;
  hit.partnerTimestamp += jumpedNs_;
  if (Started(Stream::Energy)) {
    Enqueue(energy_, hit);
  }
  if (Started(Stream::Pairs) && hit.completesPair && switches_.Sees(hit.channel ^ 1U, hit.partnerRaw)) {
    Enqueue(pairs_, hit);
  }
}

void Detector::Enqueue(std::deque<Hit>& queue, const Hit& hit) const {
  if (queue.size() < settings_.queue) {
    queue.push_back(hit);
  }
}

Attempt Detector::AttemptHits(Stream stream) {
  Advance(Backlog::Waits);
  if (settings_.lossless && stream == Stream::Pairs) {
    return {};  // recorded hits don't tell of partners
  }
  std::deque<Hit>& queue = stream == Stream::Energy ? energy_ : pairs_;
  return queue.empty() ? WhenNext() : Attempt{TakeBlock(stream, queue), {}, {}};
}

Attempt Detector::WhenNext() {
  const std::uint64_t next = feed_->NextDue();
  if (next == EventFeed::Never) {
    return {nullptr, Status::EndOfData, EventFeed::Never};
  }
  const std::uint64_t now = FeedTime();
  return {nullptr, Status::Timeout, next > now ? next - now : 0};
}

std::shared_ptr<Block> Detector::TakeBlock(Stream stream, std::deque<Hit>& queue) {
  const auto count = static_cast<std::ptrdiff_t>(std::min(queue.size(), settings_.block));
  const std::vector<Hit> hits(queue.begin(), queue.begin() + count);
  queue.erase(queue.begin(), queue.begin() + count);
  const bool pairs = stream == Stream::Pairs;
  if (!pairs || !Started(Stream::Energy)) {
    std::ranges::for_each(hits, [&](const Hit& hit) { CountOut(hit, pairs); });
  }
  return pairs ? MakePairBlock(hits) : MakeEnergyBlock(hits);
}

void Detector::CountOut(const Hit& hit, bool withPartner) {
  ++out_[hit.channel];
  if (withPartner) {
    ++out_[hit.channel ^ 1U];
  }
}

Attempt Detector::AttemptCounters() {
  Advance(Backlog::Waits);
  const std::uint64_t now = clock_();
  if (now < nextCounters_) {
    return {nullptr, Status::Timeout, nextCounters_ - now};
  }
  nextCounters_ = now + settings_.countersIntervalNs;
  return {MakeRateBlock(time_.Now(), {inAtStart_, outAtStart_, in_, out_}), {}, {}};
}

std::uint64_t Detector::T0Pulses() const {
  const double seconds = static_cast<double>(timeBeforeRestart_ + time_.Now()) * 1e-9;
  return static_cast<std::uint64_t>(seconds * settings_.t0Rate);
}

}  // namespace korvax::sim
