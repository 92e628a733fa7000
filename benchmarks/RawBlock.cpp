#include "benchmarks/RawBlock.h"

#include <random>

namespace bench {

RawBlock::RawBlock(std::size_t events, quint32 channels, quint32 energies, quint32 seed)
    : records_(events), entries_(events) {
  std::mt19937 random(seed);
  for (std::size_t i = 0; i < events; ++i) {
    board::EnergyRecord& record = records_[i];
    record = {};
    record.timestamp = i * 100;
    record.channel = static_cast<quint32>(random() % channels);
    record.energyRaw = static_cast<quint32>(random() % energies);
    entries_[i] = {};
    entries_[i].record = &record;
  }
}

}  // namespace bench
