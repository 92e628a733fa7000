#include "simulator/Block.h"

#include <algorithm>
#include <array>

namespace korvax::sim {
namespace {

template <typename Record>
class RecordBlock : public Block {
public:
  explicit RecordBlock(std::size_t capacity) {
    records_.reserve(capacity);
    entries_.reserve(capacity);
  }

  // At most as many as the capacity: entries point into the records.
  void Add(std::uint64_t timestamp, const Record& record) {
    records_.push_back(record);
    entries_.push_back({entries_.size(), timestamp, 0, &records_.back()});
  }

private:
  std::vector<Record> records_;
};

layout::EnergyRecord EnergyRecordOf(const Hit& hit) {
  return {hit.timestamp, hit.channel, hit.energyRaw, hit.energyKeV, hit.firstFlag, hit.secondFlag, 0, hit.number};
}

layout::PairRecord PairRecordOf(const Hit& hit) {
  const auto [earlier, later] = std::minmax(hit.timestamp, hit.partnerTimestamp);
  layout::PairRecord record{};
  record.timestamp = earlier;
  record.pairNumber = hit.channel / 2;
  record.extra = static_cast<std::uint32_t>(later - earlier);
  record.energyRaw1 = hit.energyRaw;
  record.energyRaw2 = hit.partnerRaw;
  record.energyKeV1 = hit.energyKeV;
  record.energyKeV2 = hit.partnerKeV;
  if (hit.channel % 2 == 1) {  // the even channel comes first
    std::swap(record.energyRaw1, record.energyRaw2);
    std::swap(record.energyKeV1, record.energyKeV2);
  }
  return record;
}

class RateBlock : public Block {
public:
  RateBlock(std::uint64_t timestamp, RateCounts counts) : counts_(std::move(counts)) {
    record_.channels = static_cast<std::uint32_t>(counts_.in.size());
    std::array<std::vector<std::uint64_t>*, 4> arrays{&counts_.inAtStart, &counts_.outAtStart, &counts_.in,
                                                      &counts_.out};
    std::ranges::transform(arrays, record_.arrays, [](auto* array) { return array->data(); });
    entries_.push_back({0, timestamp, 0, &record_});
  }

private:
  RateCounts counts_;
  layout::RateRecord record_{};
};

}  // namespace

std::shared_ptr<Block> MakeEnergyBlock(std::span<const Hit> hits) {
  auto block = std::make_shared<RecordBlock<layout::EnergyRecord>>(hits.size());
  for (const Hit& hit : hits) {
    block->Add(hit.timestamp, EnergyRecordOf(hit));
  }
  return block;
}

std::shared_ptr<Block> MakePairBlock(std::span<const Hit> hits) {
  auto block = std::make_shared<RecordBlock<layout::PairRecord>>(hits.size());
  for (const Hit& hit : hits) {
    if (hit.completesPair) {
      const layout::PairRecord record = PairRecordOf(hit);
      block->Add(record.timestamp, record);
    }
  }
  return block;
}

std::shared_ptr<Block> MakeRateBlock(std::uint64_t timestamp, RateCounts counts) {
  return std::make_shared<RateBlock>(timestamp, std::move(counts));
}

}  // namespace korvax::sim
