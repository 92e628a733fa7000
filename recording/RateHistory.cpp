#include "recording/RateHistory.h"

namespace korvax {

// Kept: the limit is looked at before the new record comes, so one more than the depth stays.
void RateHistory::Add(Record record) {
  std::vector<Record> old;  // dies outside the lock
  const Lock lock(mutex_);
  latest_ = record;
  while (records_.size() > depth_ || (!records_.empty() && channels_ + record->channelCount > MostChannels)) {
    channels_ -= records_.back()->channelCount;
    old.push_back(std::move(records_.back()));
    records_.pop_back();
  }
  channels_ += record->channelCount;
  records_.push_front(std::move(record));
}

void RateHistory::Clear() {
  std::deque<Record> old;
  const Lock lock(mutex_);
  records_.swap(old);
  channels_ = 0;
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
