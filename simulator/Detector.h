#pragma once

#include "simulator/ChannelSwitches.h"
#include "simulator/Endpoint.h"
#include "simulator/EventFeed.h"
#include "simulator/RunClock.h"

#include <array>
#include <deque>

namespace korvax::sim {

struct DetectorSettings {
  std::size_t queue = 1'000'000;  // hits that wait for a reader; more are lost
  std::size_t block = 4096;       // entries of a read at most
  double t0Rate = 1000.0;         // pulses per second of the time reference, 0 for a board without it
  std::uint64_t countersIntervalNs = 100'000'000;
  // Nothing is lost: the feed isn't read further than the energy endpoint's readers have come.
  bool lossless = false;
};

// What becomes of the hits that one call may not generate any more: they wait for the calls to come as far
// as queues have room for them, or all are lost.
enum class Backlog { Waits, IsLost };

enum class Stream : std::size_t { Energy, Pairs, Counters };

// The one detector behind the endpoints "energy", "energy_pair" and "rate_counters", which thus tell of
// the same hits. Its time is that during which one of them was started; hits are made when a read asks
// for them, as many as the time calls for, but at most MostAtOnce by one call. Thread-safe.
//
// Where more than that are due, a read leaves the rest to the reads that follow, as far as the queues of the
// started endpoints have room for them, each hit taken for one that needs a place. Hits beyond that could
// reach nobody and are jumped over, as is the whole rest by start, stop and reset, so that these find the
// detector at the present: time goes on, and the hits are counted as in at the rate per channel of the
// MostAtOnce ones that this call generated. Who never lets that many wait gets each hit, the same for a seed.
// A lossless feed is never jumped over.
//
// Reset of the energy endpoint restarts the detector at time 0 (with the energy endpoint stopped, reset of
// the pair endpoint does so too), empties what waits, and makes the same hits anew; so does the start that
// follows a reset or is the first. Reset of the counters sets them to 0.
//
// The counters count, per channel, in: hits above threshold while the detector ran; out: hits handed out by
// "energy", or while that is stopped by "energy_pair".
class Detector {
public:
  static constexpr std::size_t MostAtOnce = 1 << 16;

  Detector(std::unique_ptr<EventFeed> feed, const DetectorSettings& settings, const ChannelSwitches& switches,
           Clock clock);

  void Start(Stream stream);
  void Stop(Stream stream);
  void Reset(Stream stream);
  ReadResult Read(Stream stream, std::int32_t timeoutMs);

private:
  bool Started(Stream stream) const { return started_[static_cast<std::size_t>(stream)]; }
  // Whether reset and start of this endpoint restart the detector.
  bool Governs(Stream stream) const;
  void SetStarted(Stream stream, bool started);
  bool ShouldRun() const;
  void Restart();
  void ClearCounters();
  // Brings the detector to the present, or as near as one call may.
  void Advance(Backlog backlog);
  void CountT0();
  bool MayTake() const;
  // Jumps over what is lost of a backlog; the MostAtOnce hits before it took the time since `first`.
  void JumpBacklog(std::uint64_t first, std::size_t room);
  std::size_t Room() const;
  // The time as the feed counts it.
  std::uint64_t FeedTime() const { return time_.Now() - jumpedNs_; }
  void Deliver(Hit hit);
  void Enqueue(std::deque<Hit>& queue, const Hit& hit) const;
  Attempt AttemptHits(Stream stream);
  Attempt WhenNext();
  Attempt AttemptCounters();
  std::shared_ptr<Block> TakeBlock(Stream stream, std::deque<Hit>& queue);
  void CountOut(const Hit& hit, bool withPartner);
  std::uint64_t T0Pulses() const;

  const DetectorSettings settings_;
  const ChannelSwitches& switches_;
  const Clock clock_;

  std::mutex mutex_;  // guards all below
  std::condition_variable wake_;
  std::unique_ptr<EventFeed> feed_;
  RunClock time_;
  std::array<bool, 3> started_{};
  std::array<bool, 3> fresh_{true, true, true};  // not started since the last reset
  std::deque<Hit> energy_;
  std::deque<Hit> pairs_;
  std::vector<std::uint64_t> in_, out_, inAtStart_, outAtStart_;  // the last one is T0
  std::vector<std::uint64_t> inBefore_;                           // in_ as the last advance found it
  std::vector<std::uint64_t> numbers_;                            // per channel, in since the restart
  std::uint64_t jumpedNs_ = 0;                                    // since the restart
  std::uint64_t timeBeforeRestart_ = 0;
  std::uint64_t t0Cleared_ = 0;
  std::uint64_t nextCounters_ = 0;
};

// One of the detector's endpoints.
class DetectorEndpoint : public Endpoint {
public:
  DetectorEndpoint(std::shared_ptr<Detector> detector, Stream stream)
      : detector_(std::move(detector)), stream_(stream) {}
  void Start() override { detector_->Start(stream_); }
  void Stop() override { detector_->Stop(stream_); }
  void Reset() override { detector_->Reset(stream_); }
  ReadResult Read(std::int32_t timeoutMs) override { return detector_->Read(stream_, timeoutMs); }

private:
  const std::shared_ptr<Detector> detector_;
  const Stream stream_;
};

}  // namespace korvax::sim
