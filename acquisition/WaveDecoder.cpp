#include "acquisition/WaveDecoder.h"

#include "framework/KorvaxPayload_Waves.h"

namespace acquisition {

namespace {

void SetHeader(KorvaxPayload_Waves& waves, const board::WaveGroupRecord& group) {
  waves.timestamp = group.timestamp;
  waves.headerWord1 = group.headerWord1;
  waves.samplesPerWave = group.samplesPerWave;
  waves.headerWord2 = group.headerWord2;
  waves.headerWord3 = group.headerWord3;
}

bool IsPlausible(const board::WaveGroupRecord& group) {
  return group.data != nullptr && group.waves >= 0 && group.waves <= MostWaves && group.samplesPerWave >= 0 &&
         group.samplesPerWave <= MostSamples && qint64{group.waves} * group.samplesPerWave <= MostSamplesOfGroup;
}

// Zeros where the board gave no samples.
template <typename Raw, typename T>
void TakeSamples(const Raw* raw, std::ptrdiff_t first, qint32 count, WaveSamples<T>& samples) {
  if (raw == nullptr) {
    samples.assign(static_cast<std::size_t>(count), T());
  } else {
    samples.assign(raw + first, raw + first + count);
  }
}

std::unique_ptr<KorvaxPayload_Wave> WaveOf(const board::WaveGroupRecord& group, qint32 index) {
  const board::WaveData& data = *group.data;
  const auto first = static_cast<std::ptrdiff_t>(group.samplesPerWave) * index;
  auto wave = std::make_unique<KorvaxPayload_Wave>();
  wave->word1 = data.word1;
  wave->word2 = data.word2;
  wave->word3 = data.word3;
  TakeSamples(data.analog, first, group.samplesPerWave, wave->analog);
  TakeSamples(data.digital, first, group.samplesPerWave, wave->digital);
  return wave;
}

}  // namespace

std::size_t DecodeWaveform(std::span<const board::Entry> entries, const BatchSink& sink) {
  auto waves = std::make_unique<KorvaxPayload_Waves>();
  std::size_t decoded = 0;
  for (const board::Entry& entry : entries) {
    const auto* group = static_cast<const board::WaveGroupRecord*>(entry.record);
    if (group == nullptr) {
      continue;
    }
    SetHeader(*waves, *group);
    const bool isPlausible = IsPlausible(*group);
    decoded += isPlausible || group->waves == 0 ? 1U : 0U;
    const qint32 count = isPlausible ? group->waves : 0;
    for (qint32 w = 0; w < count; ++w) {
      waves->waves.push_back(WaveOf(*group, w));
    }
  }
  auto batch = std::make_unique<PayloadBatch>();
  batch->dataType = QLatin1String("waveform");
  batch->timestamp = waves->timestamp;
  batch->records.push_back(std::move(waves));
  sink(std::move(batch));
  return decoded;
}

}  // namespace acquisition
