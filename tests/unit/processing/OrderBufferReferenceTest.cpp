#include "tests/unit/processing/Events.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Random = std::mt19937_64;
using Key = std::pair<quint64, quint32>;  // timestamp and channel; no two events share both

quint64 Below(Random& random, quint64 limit) {
  return random() % limit;
}

/// The rule at its plainest: append all, sort the whole.
class Reference {
public:
  void Add(const std::vector<quint64>& timestamps, quint32 channel) {
    for (const quint64 timestamp : timestamps) {
      keys_.emplace_back(timestamp, channel++);
    }
    std::sort(keys_.begin(), keys_.end());
  }
  std::size_t Size() const { return keys_.size(); }
  std::vector<Key> TakeGroup() {
    const auto first = static_cast<double>(keys_.front().first);
    const auto end = std::find_if(keys_.begin(), keys_.end(), [first](const Key& key) {
      return static_cast<double>(key.first) - first > 100.0;
    });
    const std::vector<Key> group(keys_.begin(), end);
    keys_.erase(keys_.begin(), end);
    return group;
  }

private:
  std::vector<Key> keys_;
};

// In the order of the timestamps as they stand; events of equal ones by channel, as they may stand in any order.
std::vector<Key> KeysOf(const PayloadBatch& batch) {
  std::vector<Key> keys;
  for (std::size_t i = 0; i < batch.events.size(); ++i) {
    keys.emplace_back(test::EventAt(batch, i).timestamp, test::EventAt(batch, i).channel);
  }
  EXPECT_TRUE(
      std::is_sorted(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.first < b.first; }));
  std::sort(keys.begin(), keys.end());
  return keys;
}

struct Input {
  const char* what;
  quint64 (*timestamp)(Random& random, quint64 index);
};

const Input Inputs[] = {
    {"random", [](Random& random, quint64) { return Below(random, 1'000'000); }},
    {"ofAnyValue", [](Random& random, quint64) -> quint64 { return random(); }},
    {"oftenEqual", [](Random& random, quint64) { return Below(random, 300); }},
    {"allEqual", [](Random&, quint64) -> quint64 { return 5; }},
    {"sorted", [](Random&, quint64 index) { return 40 * index; }},
    {"reversed", [](Random&, quint64 index) { return 1'000'000'000 - 40 * index; }},
    {"nearlySorted", [](Random& random, quint64 index) { return 40 * index + Below(random, 2'000); }},
    {"sortedWithStragglers",
     [](Random& random, quint64 index) { return Below(random, 50) == 0 ? 40 * (index / 2) : 40 * index; }},
    {"near2To64", [](Random& random, quint64) { return ~Below(random, 50'000); }},
    {"around2To53", [](Random& random, quint64) { return 9'007'199'254'730'992 + Below(random, 20'000); }},
    {"around2To63", [](Random& random, quint64) { return 9'223'372'036'854'765'808U + Below(random, 20'000); }},
};

class OrderBufferInput : public testing::TestWithParam<Input> {
protected:
  // Batches of a random size go in, a random number of groups comes out in between.
  void Compare(quint64 seed) {
    Random random(seed);
    korvax::OrderBuffer buffer;
    Reference reference;
    quint32 index = 0;
    for (int round = 0; round < 40; ++round) {
      std::vector<quint64> timestamps(Below(random, 200));
      const quint32 firstChannel = index;
      for (quint64& timestamp : timestamps) {
        timestamp = GetParam().timestamp(random, index++);
      }
      buffer.Add(test::Events(timestamps, firstChannel), 0);
      reference.Add(timestamps, firstChannel);
      for (quint64 groups = Below(random, 100); groups > 0 && reference.Size() > 0; --groups) {
        ASSERT_EQ(KeysOf(*buffer.TakeGroup()), reference.TakeGroup());
      }
      ASSERT_EQ(buffer.Size(), reference.Size());
    }
    while (reference.Size() > 0) {
      ASSERT_EQ(KeysOf(*buffer.TakeGroup()), reference.TakeGroup());
    }
    EXPECT_EQ(buffer.Size(), 0U);
  }
};

TEST_P(OrderBufferInput, leavesInTheGroupsOfAWholeSort) {
  for (quint64 seed = 1; seed <= 5; ++seed) {
    SCOPED_TRACE(seed);
    ASSERT_NO_FATAL_FAILURE(Compare(seed));
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, OrderBufferInput, testing::ValuesIn(Inputs),
                         [](const auto& row) { return std::string(row.param.what); });

}  // namespace
