#include "benchmarks/Inputs.h"

#include <map>
#include <utility>

namespace bench {

namespace {

struct MadeBlocks {
  std::vector<RawBlock> blocks;
  std::vector<std::span<const board::Entry>> entries;
};

MadeBlocks MakeEventBlocks(int eventsPerBlock, int channels) {
  MadeBlocks made;
  for (quint32 seed = 1; seed <= 64; ++seed) {
    made.blocks.emplace_back(static_cast<std::size_t>(eventsPerBlock), static_cast<quint32>(channels), Bins, seed);
    made.entries.push_back(made.blocks.back().Entries());
  }
  return made;
}

}  // namespace

Blocks EventBlocks(int eventsPerBlock, int channels) {
  static std::map<std::pair<int, int>, MadeBlocks> made;
  const auto [place, isNew] = made.try_emplace({eventsPerBlock, channels});
  if (isNew) {
    place->second = MakeEventBlocks(eventsPerBlock, channels);
  }
  return place->second.entries;
}

Blocks PairBlocks() {
  static std::vector<board::EnergyPairRecord> records(PairsPerBlock);
  static std::vector<board::Entry> entries(records.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].timestamp = i;
    records[i].pair = static_cast<quint32>(i % 32);
    records[i].energyRaw[0] = static_cast<quint32>(i * 3 % Bins);
    records[i].energyRaw[1] = static_cast<quint32>(i * 7 % Bins);
    entries[i].record = &records[i];
  }
  static const std::span<const board::Entry> block(entries);
  return {&block, 1};
}

const std::vector<WaveSamplesOfRead>& WaveReads() {
  static const auto reads = [] {
    std::vector<WaveSamplesOfRead> made(64);
    for (WaveSamplesOfRead& read : made) {
      for (int i = 0; i < Waves * Samples; ++i) {
        read.analog.push_back(i % 1000);
        read.digital.push_back(static_cast<quint32>(i % 16));
      }
    }
    return made;
  }();
  return reads;
}

namespace {

struct WaveBlock {
  board::WaveData data{};
  board::WaveGroupRecord group{};
  board::Entry entry{};
};

std::vector<WaveBlock> MakeWaveBlocks() {
  std::vector<WaveBlock> blocks(WaveReads().size());
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    WaveBlock& block = blocks[i];
    block.data.analog = WaveReads()[i].analog.data();
    block.data.digital = WaveReads()[i].digital.data();
    block.group.samplesPerWave = Samples;
    block.group.waves = Waves;
    block.group.data = &block.data;
    block.entry.record = &block.group;
  }
  return blocks;
}

}  // namespace

Blocks WaveBlocks() {
  static const std::vector<WaveBlock> blocks = MakeWaveBlocks();
  static const auto entries = [] {
    std::vector<std::span<const board::Entry>> spans;
    for (const WaveBlock& block : blocks) {
      spans.emplace_back(&block.entry, 1);
    }
    return spans;
  }();
  return entries;
}

}  // namespace bench
