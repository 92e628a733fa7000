#include "sinks/TraceStore.h"

#include "framework/KorvaxPayload_Waves.h"

#include <algorithm>
#include <new>

namespace korvax {

namespace {

constexpr quint32 WordBits = 32;

// A number of 0 must not let the others grow without end: loops and files go by each of them.
bool IsTooMuch(const TraceShape& shape) {
  if (shape.channels > TraceStore::MostTraces || shape.analog > TraceStore::MostTraces ||
      shape.digital > TraceStore::MostTraces) {
    return true;
  }
  const qint64 traces = std::max(shape.channels, 1) * std::max(qint64{shape.analog} + shape.digital, qint64{1});
  return traces > TraceStore::MostSamples / std::max(shape.samples, 1);
}

template <typename T>
void TakeSamples(WaveSamples<T>& from, qint32 count, WaveSamples<T>& to) {
  const auto taken = std::min(static_cast<std::size_t>(count), from.size());
  if (taken == to.size()) {
    std::swap(from, to);
    to.resize(taken);
  } else {
    std::copy_n(from.begin(), taken, to.begin());
  }
}

}  // namespace

TraceStore::TraceStore(TraceShape shape)
    : shape_{std::max(shape.samples, 0), std::max(shape.channels, 0), std::max(shape.analog, 0),
             std::max(shape.digital, 0)} {
  tooLarge_ = IsTooMuch(shape_);
  if (tooLarge_ || SlotCount() == 0 || shape_.samples == 0) {
    return;
  }
  const auto samples = static_cast<std::size_t>(shape_.samples);
  try {
    channels_.assign(static_cast<std::size_t>(shape_.channels),
                     {WaveSamples<double>(samples), WaveSamples<quint32>(samples)});
  } catch (const std::bad_alloc&) {
    channels_ = {};
    tooLarge_ = true;
  }
}

void TraceStore::Store(KorvaxPayload_Waves& waves) {
  const qint32 samples = std::clamp(waves.samplesPerWave, 0, shape_.samples);
  const auto count = std::min(waves.waves.size(), channels_.size());
  for (std::size_t c = 0; c < count; ++c) {
    KorvaxPayload* const record = waves.waves[c].get();
    if (record != nullptr && record->PayloadKind() == KorvaxPayload::Kind::Wave) {
      auto& wave = static_cast<KorvaxPayload_Wave&>(*record);
      TakeSamples(wave.analog, samples, channels_[c].analog);
      TakeSamples(wave.digital, samples, channels_[c].words);
    }
  }
}

std::vector<double> TraceStore::Slot(qint64 slot) const {
  if (!HasSlot(slot)) {
    return {};
  }
  std::vector<double> values(static_cast<std::size_t>(shape_.samples));
  const auto channel = static_cast<std::size_t>(slot / (qint64{shape_.digital} + 1));
  const auto trace = slot % (qint64{shape_.digital} + 1);
  if (channel >= channels_.size()) {
    return values;  // room that no channel uses
  }
  if (trace == 0) {
    std::copy(channels_[channel].analog.begin(), channels_[channel].analog.end(), values.begin());
    return values;
  }
  const auto bit = static_cast<quint32>(trace - 1) % WordBits;
  std::transform(channels_[channel].words.begin(), channels_[channel].words.end(), values.begin(),
                 [bit](quint32 word) { return static_cast<double>((word >> bit) & 1U); });
  return values;
}

std::span<const double> TraceStore::Analog(qint32 channel) const {
  return HasSlot(FirstSlot(channel)) ? std::span<const double>(channels_[static_cast<std::size_t>(channel)].analog)
                                     : std::span<const double>();
}

// The bits of those digital traces that have a slot.
quint32 TraceStore::WordMask(qint32 channel) const {
  quint32 mask = 0;
  for (quint32 d = 0; d < std::min(static_cast<quint32>(shape_.digital), WordBits); ++d) {
    mask |= HasSlot(FirstSlot(channel) + 1 + d) ? 1U << d : 0U;
  }
  return mask;
}

std::vector<quint32> TraceStore::DigitalWords(qint32 channel) const {
  std::vector<quint32> words(static_cast<std::size_t>(shape_.samples));
  if (const quint32 mask = WordMask(channel)) {
    const auto& stored = channels_[static_cast<std::size_t>(channel)].words;
    std::transform(stored.begin(), stored.end(), words.begin(), [mask](quint32 word) { return word & mask; });
  }
  return words;
}

}  // namespace korvax
