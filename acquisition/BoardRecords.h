#pragma once

#include <QtGlobal>

#include <cstddef>

/// What a board library hands out, byte by byte; little-endian. Pointers are the library's and may be null.
namespace board {

/// The caller's 16-byte block that ReadData fills.
struct ReadBlock {
  const std::byte* entries = nullptr;  ///< count entries of EntrySize bytes
  quint32 unused = 0;
  qint32 count = 0;
};
static_assert(sizeof(ReadBlock) == 16 && offsetof(ReadBlock, count) == 12);

struct Entry {
  quint64 unused0;
  quint64 timestamp;  ///< of a rate record; unused otherwise
  quint64 unused16;
  const void* record;
};
static_assert(sizeof(Entry) == 32 && offsetof(Entry, timestamp) == 8 && offsetof(Entry, record) == 24);

struct EnergyRecord {
  quint64 timestamp;
  quint32 channel;
  quint32 energyRaw;
  double energyKev;
  quint8 flag0;
  quint8 flag1;
  quint8 reserved[2];
  quint32 extraWord;
};
static_assert(sizeof(EnergyRecord) == 32 && offsetof(EnergyRecord, channel) == 8 &&
              offsetof(EnergyRecord, energyRaw) == 12 && offsetof(EnergyRecord, energyKev) == 16 &&
              offsetof(EnergyRecord, flag0) == 24 && offsetof(EnergyRecord, flag1) == 25 &&
              offsetof(EnergyRecord, extraWord) == 28);

/// Two detectors of one pair share one record.
struct EnergyPairRecord {
  quint8 reserved0[16];
  quint64 timestamp;
  quint32 pair;
  quint32 energyRaw[2];
  quint8 reserved36[4];
  double energyKev[2];
  quint8 reserved56[8];
  quint8 flag0;
  quint8 flag1;
  quint8 reserved66[2];
  quint32 extraWord;
};
static_assert(sizeof(EnergyPairRecord) == 72 && offsetof(EnergyPairRecord, timestamp) == 16 &&
              offsetof(EnergyPairRecord, pair) == 24 && offsetof(EnergyPairRecord, energyRaw) == 28 &&
              offsetof(EnergyPairRecord, energyKev) == 40 && offsetof(EnergyPairRecord, flag0) == 64 &&
              offsetof(EnergyPairRecord, flag1) == 65 && offsetof(EnergyPairRecord, extraWord) == 68);

/// The samples of one group of waves. Sample s of wave w stands at index samplesPerWave * w + s of both arrays.
struct WaveData {
  quint64 word1;
  quint64 word2;
  quint64 word3;
  const qint32* analog;
  const quint32* digital;
};
static_assert(sizeof(WaveData) == 40 && offsetof(WaveData, analog) == 24 && offsetof(WaveData, digital) == 32);

struct WaveGroupRecord {
  quint64 timestamp;
  quint32 headerWord1;
  quint32 unused12;
  qint32 samplesPerWave;
  quint32 headerWord2;
  quint32 headerWord3;
  qint32 waves;
  const WaveData* data;
};
static_assert(sizeof(WaveGroupRecord) == 40 && offsetof(WaveGroupRecord, headerWord1) == 8 &&
              offsetof(WaveGroupRecord, samplesPerWave) == 16 && offsetof(WaveGroupRecord, headerWord2) == 20 &&
              offsetof(WaveGroupRecord, headerWord3) == 24 && offsetof(WaveGroupRecord, waves) == 28 &&
              offsetof(WaveGroupRecord, data) == 32);

struct RateRecord {
  quint32 channels;
  quint32 unused4;
  const quint64* arrays[4];  ///< `channels` counters each
};
static_assert(sizeof(RateRecord) == 40 && offsetof(RateRecord, arrays) == 8);

}  // namespace board
