#include "framework/Account.h"

#include <numeric>

namespace korvax {

const char* NameOf(Fate fate) {
  constexpr std::array<const char*, FateCount> Names{
      "decoded", "passed_over", "refused",      "copied",           "grouped",       "dropped",
      "counted", "cut",         "out_of_range", "repeated_channel", "while_stopped", "while_paused",
      "written", "overwritten", "not_written",  "left_out",         "other"};
  return Names[static_cast<std::size_t>(fate)];
}

Fates& Fates::operator+=(const Fates& more) {
  for (std::size_t i = 0; i < FateCount; ++i) {
    records_[i] += more.records_[i];
  }
  return *this;
}

Fates& Fates::operator-=(const Fates& fewer) {
  for (std::size_t i = 0; i < FateCount; ++i) {
    records_[i] -= fewer.records_[i];
  }
  return *this;
}

quint64 Fates::Sum() const {
  return std::accumulate(records_.begin(), records_.end(), quint64{0});
}

void Account::Book(quint64 received, const Fates& fates, quint64 waiting) {
  const Lock lock(mutex_);
  statement_.received += received;
  statement_.fates += fates;
  statement_.waiting = waiting;
}

Account::Statement Account::Get() const {
  Statement statement;
  {
    const Lock lock(mutex_);
    statement = statement_;
  }
  statement.made = made_.load(std::memory_order_relaxed);
  return statement;
}

}  // namespace korvax
