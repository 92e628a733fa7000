#include "benchmarks/Inputs.h"

namespace bench {

Blocks EventBlocks() {
  static const auto blocks = [] {
    std::vector<RawBlock> made;
    for (quint32 seed = 1; seed <= 64; ++seed) {
      made.emplace_back(EventsPerBlock, Channels, Bins, seed);
    }
    return made;
  }();
  static const auto entries = [] {
    std::vector<std::span<const board::Entry>> spans;
    for (const RawBlock& block : blocks) {
      spans.push_back(block.Entries());
    }
    return spans;
  }();
  return entries;
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
