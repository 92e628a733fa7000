#pragma once

#include "simulator/Block.h"
#include "simulator/EventFeed.h"
#include "simulator/Status.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace korvax::sim {

struct ReadResult {
  Status status = Status::Timeout;
  std::shared_ptr<Block> block;  // with status Ok, and then it holds entries
};

// One of a board's four data roads. All operations are safe from any thread.
class Endpoint {
public:
  virtual ~Endpoint() = default;
  virtual void Start() = 0;
  virtual void Stop() = 0;
  virtual void Reset() = 0;
  // Waits up to `timeoutMs` for data; a stopped endpoint has none.
  virtual ReadResult Read(std::int32_t timeoutMs) = 0;
};

// One look for data: a block, or else why there is none and when to look again.
struct Attempt {
  std::shared_ptr<Block> block;
  Status otherwise = Status::Timeout;
  std::uint64_t retryAfterNs = EventFeed::Never;
};

// Makes attempts, under the lock, until one yields a block or the time is over. A notification of `wake`
// makes it look again at once.
ReadResult ReadWithin(std::unique_lock<std::mutex>& lock, std::condition_variable& wake, std::int32_t timeoutMs,
                      const std::function<Attempt()>& attempt);

}  // namespace korvax::sim
