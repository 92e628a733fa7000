#include "tests/support/SortingModel.h"

#include <algorithm>

namespace test {

void SortingModel::Take(const RecordedEvents& message, qint64 now) {
  now_ = static_cast<quint64>(static_cast<double>(now) / 1000.0);  // a double holds no single ns of these days
  if (waiting_.size() >= 10000) {
    ++droppedMessages_;
    return;
  }
  for (const RecordedEvent& event : message) {
    waiting_.push_back({event, now_});
  }
  std::stable_sort(waiting_.begin(), waiting_.end(),
                   [](const Waiter& a, const Waiter& b) { return a.event.timestamp < b.event.timestamp; });
}

std::vector<RecordedEvents> SortingModel::EndDrain() {
  std::vector<RecordedEvents> groups;
  if (waiting_.size() > 1) {
    while (!waiting_.empty() && static_cast<double>(now_ - waiting_.front().arrival) > 5000.0) {
      groups.push_back(TakeGroup());
    }
  }
  return groups;
}

RecordedEvents SortingModel::TakeGroup() {
  RecordedEvents group;
  const auto first = static_cast<double>(waiting_.front().event.timestamp);
  const auto end = std::find_if(waiting_.begin(), waiting_.end(), [first](const Waiter& waiter) {
    return static_cast<double>(waiter.event.timestamp) - first > 100.0;
  });
  for (auto at = waiting_.begin(); at != end; ++at) {
    group.push_back(at->event);
  }
  waiting_.erase(waiting_.begin(), end);
  return group;
}

std::vector<RecordedEvents> GroupsOf(RecordedEvents events) {
  std::stable_sort(events.begin(), events.end(),
                   [](const RecordedEvent& a, const RecordedEvent& b) { return a.timestamp < b.timestamp; });
  std::vector<RecordedEvents> groups;
  for (const RecordedEvent& event : events) {
    if (groups.empty() || event.timestamp - groups.back().front().timestamp > 100) {
      groups.emplace_back();
    }
    groups.back().push_back(event);
  }
  return groups;
}

}  // namespace test
