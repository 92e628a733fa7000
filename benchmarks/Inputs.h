#pragma once

#include "benchmarks/RawBlock.h"

#include <span>
#include <vector>

namespace bench {

// What boards hand out, made beforehand. Several blocks of each, so that records and counters don't all stay in
// the nearest cache, as those of a board wouldn't.

using Blocks = std::span<const std::span<const board::Entry>>;

inline constexpr int Channels = 64;
inline constexpr int Bins = 4096;
inline constexpr int EventsPerBlock = 1000;

/// 64 blocks of events with channels and energies spread evenly.
Blocks EventBlocks(int eventsPerBlock = EventsPerBlock, int channels = Channels);

inline constexpr int PairsPerBlock = 1000;

/// One block of pair records.
Blocks PairBlocks();

inline constexpr int Waves = 16;
inline constexpr int Samples = 4096;

/// The samples of one read of all waves.
struct WaveSamplesOfRead {
  std::vector<qint32> analog;
  std::vector<quint32> digital;
};
const std::vector<WaveSamplesOfRead>& WaveReads();
/// A block for each of them.
Blocks WaveBlocks();

// One event in ten belongs to a pair of neighbouring strips that fired together; the others stand alone.
class Coincidences {
public:
  Coincidences(std::size_t blocks, std::size_t eventsPerBlock)
      : records_(blocks * eventsPerBlock), entries_(records_.size()) {
    quint64 time = 0;
    for (std::size_t i = 0; i < records_.size(); ++i) {
      const bool isSecond = i % 20 == 1;
      time += isSecond ? 10 : 1'000;
      records_[i] = {};
      records_[i].timestamp = time;
      records_[i].channel = static_cast<quint32>(isSecond ? records_[i - 1].channel + 1 : i % 8 * 2);
      records_[i].energyRaw = static_cast<quint32>(i * 7 % 2000);
      entries_[i].record = &records_[i];
    }
    for (std::size_t block = 0; block < blocks; ++block) {
      blocks_.push_back(std::span(entries_).subspan(block * eventsPerBlock, eventsPerBlock));
    }
  }
  std::span<const std::span<const board::Entry>> Blocks() const { return blocks_; }

private:
  std::vector<board::EnergyRecord> records_;
  std::vector<board::Entry> entries_;
  std::vector<std::span<const board::Entry>> blocks_;
};

}  // namespace bench
