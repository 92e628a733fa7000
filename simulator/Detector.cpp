#include "simulator/Detector.h"

#include <algorithm>
#include <utility>

namespace korvax::sim {

Detector::Detector(std::unique_ptr<EventFeed> feed, const DetectorSettings& settings,
                   const ChannelSwitches& switches, Clock clock)
    : settings_(settings), switches_(switches), clock_(clock), feed_(std::move(feed)), time_(clock) {
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
  Advance();  // what has happened so far happened with the counters and queues as they were
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
  Advance();
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

void Detector::Advance() {
  constexpr std::size_t mostAtOnce = 1 << 16;  // a looping replay with all channels off never ends
  const std::uint64_t now = time_.Now();
  if (settings_.t0Rate > 0.0) {
    in_.back() = out_.back() = T0Pulses() - t0Cleared_;
  }
  for (std::size_t taken = 0; MayTake() && feed_->NextDue() <= now; ++taken) {
    if (settings_.lossless && taken == mostAtOnce) {
      return;
    }
    Deliver(feed_->Take());
  }
}

// A lossless feed waits for the reader of the energy endpoint.
bool Detector::MayTake() const {
  return !settings_.lossless ? ShouldRun() : Started(Stream::Energy) && energy_.size() < settings_.block;
}

void Detector::Deliver(const Hit& hit) {
  if (!switches_.Sees(hit.channel, hit.energyRaw)) {
    return;
  }
  ++in_[hit.channel];
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
  Advance();
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
  const std::uint64_t now = time_.Now();
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
  Advance();
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
