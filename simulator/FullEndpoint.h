#pragma once

#include "simulator/Endpoint.h"

namespace korvax::sim {

// Hands out blocks that were built beforehand, in turn, as fast as they are read: for load tests. After
// `limit` blocks since the last reset the data end; 0 stands for no limit.
class FullEndpoint : public Endpoint {
public:
  FullEndpoint(std::vector<std::shared_ptr<Block>> blocks, std::uint64_t limit)
      : blocks_(std::move(blocks)), limit_(limit) {}

  void Start() override;
  void Stop() override;
  void Reset() override;
  ReadResult Read(std::int32_t timeoutMs) override;
  // Blocks handed out since the last reset.
  std::uint64_t HandedOut() const;

private:
  Attempt TryBlock();

  const std::vector<std::shared_ptr<Block>> blocks_;
  const std::uint64_t limit_;

  mutable std::mutex mutex_;  // guards all below
  std::condition_variable wake_;
  bool started_ = false;
  std::uint64_t handedOut_ = 0;
};

}  // namespace korvax::sim
