#include "processing/OrderBuffer.h"

#include <algorithm>
#include <iterator>

namespace korvax {

namespace {

bool IsEarlier(const OrderBuffer::Event& a, const OrderBuffer::Event& b) {
  return a->timestamp < b->timestamp;
}

}  // namespace

void OrderBuffer::Add(std::vector<Event> batch) {
  if (batch.empty()) {
    return;
  }
  std::sort(batch.begin(), batch.end(), IsEarlier);
  const auto overlap =
      std::upper_bound(events_.begin(), events_.end(), batch.front(), IsEarlier) - events_.begin();
  const auto middle = static_cast<std::ptrdiff_t>(events_.size());
  events_.insert(events_.end(), std::make_move_iterator(batch.begin()), std::make_move_iterator(batch.end()));
  std::inplace_merge(events_.begin() + overlap, events_.begin() + middle, events_.end(), IsEarlier);
}

bool OrderBuffer::IsDue(quint64 now) const {
  // Kept: the difference is unsigned, so a clock that was set back makes everything due.
  const quint64 waited = now - static_cast<quint64>(events_.front()->arrivalTime);
  return static_cast<double>(waited) > HoldTime;
}

std::unique_ptr<PayloadBatch> OrderBuffer::TakeGroup() {
  auto group = std::make_unique<PayloadBatch>();
  group->dataType = events_.front()->typeText;
  group->timestamp = events_.front()->timestamp;
  const auto first = static_cast<double>(group->timestamp);
  do {
    group->records.push_back(std::move(events_.front()));
    events_.pop_front();
  } while (!events_.empty() && static_cast<double>(events_.front()->timestamp) - first <= GroupWidth);
  return group;
}

}  // namespace korvax
