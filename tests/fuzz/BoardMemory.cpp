#include "tests/fuzz/BoardMemory.h"

#include "acquisition/RateDecoder.h"
#include "acquisition/WaveDecoder.h"

#include <QString>

namespace fuzz {

namespace {

// What an entry's first byte says of its record.
enum EntryBits : std::uint8_t { HasRecord = 1, SameAsBefore = 2 };
// Of a group of waves or of rates: which pointers are null.
enum NullBits : std::uint8_t { NoData = 1, NoAnalog = 2, NoDigital = 4 };

}  // namespace

BoardMemory::BoardMemory(Input& input, const QString& dataType) {
  while (!input.IsEmpty()) {
    const auto bits = input.Take<std::uint8_t>();
    board::Entry entry{};
    entry.timestamp = input.Take<quint64>();
    if ((bits & SameAsBefore) != 0 && !entries_.empty()) {
      entry.record = entries_.back().record;
    } else if ((bits & HasRecord) != 0) {
      entry.record = NewRecord(input, dataType);
    }
    entries_.push_back(entry);
  }
}

const void* BoardMemory::NewRecord(Input& input, const QString& dataType) {
  if (dataType == QLatin1String("waveform")) {
    return NewWaveGroup(input);
  }
  if (dataType == QLatin1String("rate_counters")) {
    return NewRates(input);
  }
  return dataType == QLatin1String("energy_pair") ? Keep(input.Take<board::EnergyPairRecord>())
                                                  : Keep(input.Take<board::EnergyRecord>());
}

const void* BoardMemory::NewWaveGroup(Input& input) {
  const auto nulls = input.Take<std::uint8_t>();
  board::WaveGroupRecord group{};
  group.timestamp = input.Take<quint64>();
  group.headerWord1 = input.Take<quint32>();
  group.samplesPerWave = input.Take<qint32>();
  group.headerWord2 = input.Take<quint32>();
  group.headerWord3 = input.Take<quint32>();
  group.waves = input.Take<qint32>();
  if ((nulls & NoData) == 0) {
    MakeAffordable(group);
    const qint64 samples = qint64{group.samplesPerWave} * group.waves;
    const bool isTaken = group.samplesPerWave >= 0 && group.samplesPerWave <= acquisition::MostSamples &&
                         group.waves >= 0 && group.waves <= acquisition::MostWaves &&
                         samples <= acquisition::MostSamplesOfGroup;
    const auto count = static_cast<std::size_t>(isTaken ? samples : 1);
    board::WaveData data{input.Take<quint64>(), input.Take<quint64>(), input.Take<quint64>(), nullptr, nullptr};
    data.analog = (nulls & NoAnalog) == 0 ? NewArray<qint32>(input, count) : nullptr;
    data.digital = (nulls & NoDigital) == 0 ? NewArray<quint32>(input, count) : nullptr;
    group.data = static_cast<const board::WaveData*>(Keep(data));
  }
  return Keep(group);
}

void BoardMemory::MakeAffordable(board::WaveGroupRecord& group) {
  if (group.waves > affordableWaves_ && group.waves <= acquisition::MostWaves) {
    group.waves = static_cast<qint32>(affordableWaves_);
  }
  const bool isTaken = group.waves > 0 && group.waves <= acquisition::MostWaves && group.samplesPerWave > 0 &&
                       group.samplesPerWave <= acquisition::MostSamples;
  if (!isTaken) {
    return;
  }
  const qint64 samples = qint64{group.waves} * group.samplesPerWave;
  if (samples > affordableSamples_ && samples <= acquisition::MostSamplesOfGroup) {
    group.samplesPerWave = static_cast<qint32>(affordableSamples_ / group.waves);
  }
  affordableWaves_ -= group.waves;
  affordableSamples_ -= std::min(affordableSamples_, qint64{group.waves} * group.samplesPerWave);
}

const void* BoardMemory::NewRates(Input& input) {
  const auto nulls = input.Take<std::uint8_t>();
  board::RateRecord rates{};
  rates.channels = input.Take<quint32>();
  const bool isTaken = rates.channels <= acquisition::MostRateChannels;
  if (isTaken) {
    rates.channels = std::min(rates.channels, affordableChannels_);
    affordableChannels_ -= rates.channels;
  }
  for (std::size_t i = 0; i < std::size(rates.arrays); ++i) {
    const bool isNull = (nulls >> i & 1U) != 0;
    rates.arrays[i] = isNull ? nullptr : NewArray<quint64>(input, isTaken ? rates.channels : 1);
  }
  return Keep(rates);
}

template <typename Record>
const void* BoardMemory::Keep(const Record& record) {
  owned_.push_back(std::make_shared<Record>(record));
  return owned_.back().get();
}

// Begins with up to 8 numbers of the input; the rest counts on.
template <typename Number>
const Number* BoardMemory::NewArray(Input& input, std::size_t count) {
  constexpr std::size_t FromInput = 8;
  const auto array = std::make_shared<std::vector<Number>>(count);
  for (std::size_t i = 0; i < count; ++i) {
    (*array)[i] = i < FromInput ? input.Take<Number>() : static_cast<Number>(i);
  }
  owned_.push_back(array);
  return array->data();
}

}  // namespace fuzz
