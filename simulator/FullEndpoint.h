#pragma once

#include "simulator/Endpoint.h"
#include "simulator/RunClock.h"

namespace korvax::sim {

// What a full endpoint hands out, and when. 0 stands for no limit, and for as fast as it is read.
struct FullFlow {
  std::uint64_t limit = 0;  // the data end after so many blocks since the last reset
  std::uint64_t nsPerBlock = 0;
  Clock clock;  // needed with a pace
};

// Hands out blocks that were built beforehand, in turn: for load tests. A reader that is slower than the pace gets
// what it missed, up to a second's worth; the rest of it is never made.
class FullEndpoint : public Endpoint {
public:
  FullEndpoint(std::vector<std::shared_ptr<Block>> blocks, FullFlow flow)
      : blocks_(std::move(blocks)), flow_(std::move(flow)) {}

  void Start() override;
  void Stop() override;
  void Reset() override;
  ReadResult Read(std::int32_t timeoutMs) override;
  // Blocks handed out since the last reset.
  std::uint64_t HandedOut() const;

private:
  Attempt TryBlock();
  std::uint64_t UntilDue();

  const std::vector<std::shared_ptr<Block>> blocks_;
  const FullFlow flow_;

  mutable std::mutex mutex_;  // guards all below
  std::condition_variable wake_;
  bool started_ = false;
  std::uint64_t handedOut_ = 0;
  std::uint64_t due_ = 0;  // of the next block, by the flow's clock
};

}  // namespace korvax::sim
