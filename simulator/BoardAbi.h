#pragma once

#include <cstddef>
#include <cstdint>

// The memory that a reader of this library sees. Little-endian, 64-bit pointers; every offset is fixed,
// since readers are compiled apart from this library.
namespace korvax::sim::layout {

// Filled by a read, in memory of the caller.
struct ReadBlock {
  void* entries;
  std::uint32_t unused;
  std::int32_t count;
};
static_assert(offsetof(ReadBlock, entries) == 0 && offsetof(ReadBlock, count) == 12);
static_assert(sizeof(ReadBlock) == 16);

struct Entry {
  std::uint64_t number;  // position in the block
  std::uint64_t timestamp;
  std::uint64_t reserved;
  void* record;
};
static_assert(offsetof(Entry, timestamp) == 8 && offsetof(Entry, record) == 24);
static_assert(sizeof(Entry) == 32);

struct EnergyRecord {
  std::uint64_t timestamp;  // nanoseconds
  std::uint32_t channel;
  std::uint32_t energyRaw;
  double energyKeV;
  std::uint8_t firstFlag;
  std::uint8_t secondFlag;
  std::uint16_t reserved;
  std::uint32_t extra;
};
static_assert(offsetof(EnergyRecord, timestamp) == 0 && offsetof(EnergyRecord, channel) == 8);
static_assert(offsetof(EnergyRecord, energyRaw) == 12 && offsetof(EnergyRecord, energyKeV) == 16);
static_assert(offsetof(EnergyRecord, firstFlag) == 24 && offsetof(EnergyRecord, secondFlag) == 25);
static_assert(offsetof(EnergyRecord, extra) == 28 && sizeof(EnergyRecord) == 32);

struct PairRecord {
  std::uint64_t reserved0[2];
  std::uint64_t timestamp;  // of the earlier of the two
  std::uint32_t pairNumber;
  std::uint32_t energyRaw1;
  std::uint32_t energyRaw2;
  std::uint32_t reserved1;
  double energyKeV1;
  double energyKeV2;
  std::uint64_t reserved2;
  std::uint8_t firstFlag;
  std::uint8_t secondFlag;
  std::uint16_t reserved3;
  std::uint32_t extra;  // nanoseconds between the two
};
static_assert(offsetof(PairRecord, timestamp) == 16 && offsetof(PairRecord, pairNumber) == 24);
static_assert(offsetof(PairRecord, energyRaw1) == 28 && offsetof(PairRecord, energyRaw2) == 32);
static_assert(offsetof(PairRecord, energyKeV1) == 40 && offsetof(PairRecord, energyKeV2) == 48);
static_assert(offsetof(PairRecord, firstFlag) == 64 && offsetof(PairRecord, secondFlag) == 65);
static_assert(offsetof(PairRecord, extra) == 68 && sizeof(PairRecord) == 72);

// One for all waves of a group; sample s of wave w is at index samples * w + s of both arrays.
struct WaveData {
  std::uint64_t word1;  // sampling period in nanoseconds
  std::uint64_t word2;  // sample at which the trigger stands
  std::uint64_t word3;  // number of the group
  std::int32_t* analog;
  std::uint32_t* digital;
};
static_assert(offsetof(WaveData, word2) == 8 && offsetof(WaveData, word3) == 16);
static_assert(offsetof(WaveData, analog) == 24 && offsetof(WaveData, digital) == 32);

struct WaveGroup {
  std::uint64_t timestamp;
  std::uint32_t headerWord1;  // number of the group
  std::uint32_t reserved;
  std::int32_t samples;
  std::uint32_t headerWord2;  // sampling period in nanoseconds
  std::uint32_t headerWord3;  // sample at which the trigger stands
  std::int32_t waves;
  WaveData* data;
};
static_assert(offsetof(WaveGroup, timestamp) == 0 && offsetof(WaveGroup, headerWord1) == 8);
static_assert(offsetof(WaveGroup, samples) == 16 && offsetof(WaveGroup, headerWord2) == 20);
static_assert(offsetof(WaveGroup, headerWord3) == 24 && offsetof(WaveGroup, waves) == 28);
static_assert(offsetof(WaveGroup, data) == 32 && sizeof(WaveGroup) == 40);

struct RateRecord {
  std::uint32_t channels;
  std::uint32_t reserved;
  std::uint64_t* arrays[4];  // in and out at the endpoint's start; in and out now
};
static_assert(offsetof(RateRecord, channels) == 0 && offsetof(RateRecord, arrays) == 8);
static_assert(sizeof(RateRecord) == 40);

}  // namespace korvax::sim::layout
