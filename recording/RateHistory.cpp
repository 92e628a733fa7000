#include "recording/RateHistory.h"

namespace korvax {

// Kept: the limit is looked at before the new record comes, so one more than the depth stays.
void RateHistory::Add(Record record) {
  Record oldest;  // dies outside the lock
  const Lock lock(mutex_);
  latest_ = record;
  if (records_.size() > depth_) {
    oldest = std::move(records_.back());
    records_.pop_back();
  }
  records_.push_front(std::move(record));
}

void RateHistory::Clear() {
  std::deque<Record> old;
  const Lock lock(mutex_);
  records_.swap(old);
}

RateHistory::Record RateHistory::Latest() const {
  const Lock lock(mutex_);
  return latest_;
}

std::vector<RateHistory::Record> RateHistory::Records() const {
  const Lock lock(mutex_);
  return {records_.begin(), records_.end()};
}

}  // namespace korvax
