#pragma once

#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/Lock.h"

#include <deque>

namespace korvax {

/// The latest rate record and the ones before it, newest first. The worker adds, clients read; any thread.
class RateHistory {
public:
  using Record = std::shared_ptr<const KorvaxPayload_RateCounters>;

  /// Keeps at most `depth` + 1 records.
  explicit RateHistory(std::size_t depth) : depth_(depth) {}

  void Add(Record record);
  /// Empties the history; the latest record stays.
  void Clear();

  /// Null before the first record.
  Record Latest() const;
  /// Newest first.
  std::vector<Record> Records() const;

private:
  const std::size_t depth_;
  mutable QMutex mutex_;
  Record latest_;               // this and below: guarded by mutex_
  std::deque<Record> records_;  // newest first
};

}  // namespace korvax
