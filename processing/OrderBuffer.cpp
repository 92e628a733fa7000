#include "processing/OrderBuffer.h"

#include <algorithm>
#include <iterator>

namespace korvax {

namespace {

bool IsEarlier(const KorvaxPayload_Energy& a, const KorvaxPayload_Energy& b) {
  return a.timestamp < b.timestamp;
}

}  // namespace

void OrderBuffer::Add(std::span<const KorvaxPayload_Energy> batch, qint64 arrivalTime) {
  if (batch.empty()) {
    return;
  }
  DropTaken();
  SortPlaces(batch);
  const std::size_t middle = events_.size();
  Append(batch, arrivalTime);
  MergeFrom(middle);
}

// By small keys: events are moved once, to where they belong.
void OrderBuffer::SortPlaces(std::span<const KorvaxPayload_Energy> batch) {
  places_.clear();
  for (std::size_t i = 0; i < batch.size(); ++i) {
    places_.push_back({batch[i].timestamp, i});
  }
  const auto isEarlier = [](const Place& a, const Place& b) { return a.timestamp < b.timestamp; };
  if (!std::is_sorted(places_.begin(), places_.end(), isEarlier)) {
    std::sort(places_.begin(), places_.end(), isEarlier);
  }
}

void OrderBuffer::Append(std::span<const KorvaxPayload_Energy> batch, qint64 arrivalTime) {
  for (const Place& place : places_) {
    events_.push_back(batch[place.index]);
    events_.back().arrivalTime = arrivalTime;
  }
}

// Merges what stands from `middle` on into what stands before it. Only what is later than the first of the new
// events has to move.
void OrderBuffer::MergeFrom(std::size_t middle) {
  const auto added = events_.begin() + static_cast<std::ptrdiff_t>(middle);
  const auto start = events_.begin() + static_cast<std::ptrdiff_t>(first_);
  const auto later = std::upper_bound(start, added, *added, IsEarlier);
  if (later == added) {
    return;
  }
  overlap_.assign(later, added);
  auto out = later;
  auto next = added;
  for (const KorvaxPayload_Energy& event : overlap_) {
    for (; next != events_.end() && IsEarlier(*next, event); ++next) {
      *out++ = *next;
    }
    *out++ = event;
  }
}

// Once they are the greater part, so that each event is moved about once for this.
void OrderBuffer::DropTaken() {
  if (first_ > Size()) {
    events_.erase(events_.begin(), events_.begin() + static_cast<std::ptrdiff_t>(first_));
    first_ = 0;
  }
}

bool OrderBuffer::IsDue(quint64 now) const {
  // Kept: the difference is unsigned, so a clock that was set back makes everything due.
  const quint64 waited = now - static_cast<quint64>(events_[first_].arrivalTime);
  return static_cast<double>(waited) > HoldTime;
}

std::unique_ptr<PayloadBatch> OrderBuffer::TakeGroup() {
  auto group = std::make_unique<PayloadBatch>();
  group->dataType = events_[first_].TypeText();
  group->timestamp = events_[first_].timestamp;
  const auto first = static_cast<double>(group->timestamp);
  std::size_t end = first_ + 1;
  while (end < events_.size() && static_cast<double>(events_[end].timestamp) - first <= GroupWidth) {
    ++end;
  }
  group->events.assign(events_.begin() + static_cast<std::ptrdiff_t>(first_),
                       events_.begin() + static_cast<std::ptrdiff_t>(end));
  first_ = end;
  return group;
}

}  // namespace korvax
