#include "sinks/TraceStore.h"

#include "framework/KorvaxPayload_Waves.h"

#include <algorithm>
#include <new>

namespace korvax {

namespace {

constexpr qint32 WordBits = 32;

// A number of 0 must not let the others grow without end: loops and files go by each of them.
bool IsTooMuch(const TraceShape& shape) {
  if (shape.channels > TraceStore::MostTraces || shape.analog > TraceStore::MostTraces ||
      shape.digital > TraceStore::MostTraces) {
    return true;
  }
  const qint64 traces = std::max(shape.channels, 1) * std::max(qint64{shape.analog} + shape.digital, qint64{1});
  return traces > TraceStore::MostSamples / std::max(shape.samples, 1);
}

}  // namespace

TraceStore::TraceStore(TraceShape shape)
    : shape_{std::max(shape.samples, 0), std::max(shape.channels, 0), std::max(shape.analog, 0),
             std::max(shape.digital, 0)} {
  tooLarge_ = IsTooMuch(shape_);
  if (tooLarge_) {
    return;
  }
  try {
    values_.resize(static_cast<std::size_t>(SlotCount() * shape_.samples));
  } catch (const std::bad_alloc&) {
    tooLarge_ = true;
  }
}

bool TraceStore::HasSlot(qint64 slot) const {
  return !values_.empty() && slot >= 0 && slot < SlotCount();
}

std::span<const double> TraceStore::Slot(qint64 slot) const {
  const auto samples = static_cast<std::size_t>(shape_.samples);
  return HasSlot(slot) ? std::span(values_).subspan(static_cast<std::size_t>(slot) * samples, samples)
                       : std::span<const double>();
}

std::span<double> TraceStore::WritableSlot(qint64 slot) {
  const auto samples = static_cast<std::size_t>(shape_.samples);
  return HasSlot(slot) ? std::span(values_).subspan(static_cast<std::size_t>(slot) * samples, samples)
                       : std::span<double>();
}

void TraceStore::Store(const KorvaxPayload_Waves& waves) {
  if (tooLarge_) {
    return;
  }
  const auto count = std::min<std::size_t>(waves.waves.size(), static_cast<std::size_t>(shape_.channels));
  for (std::size_t c = 0; c < count; ++c) {
    if (const auto* wave = PayloadCast<KorvaxPayload_Wave>(waves.waves[c].get())) {
      StoreWave(static_cast<qint32>(c), *wave, waves.samplesPerWave);
    }
  }
}

void TraceStore::StoreWave(qint32 channel, const KorvaxPayload_Wave& wave, qint32 samplesPerWave) {
  const qint32 samples = std::clamp(samplesPerWave, 0, shape_.samples);
  const std::span<double> analog = WritableSlot(FirstSlot(channel));
  if (!analog.empty()) {
    std::copy_n(wave.analog.begin(), std::min(samples, static_cast<qint32>(wave.analog.size())), analog.begin());
  }
  const qint32 words = std::min(samples, static_cast<qint32>(wave.digital.size()));
  for (qint32 d = 0; d < shape_.digital; ++d) {
    const std::span<double> trace = WritableSlot(FirstSlot(channel) + 1 + d);
    if (!trace.empty()) {
      std::transform(wave.digital.begin(), wave.digital.begin() + words, trace.begin(),
                     [d](quint32 word) { return static_cast<double>(static_cast<qint32>((word >> (d % WordBits)) & 1U)); });
    }
  }
}

std::vector<quint32> TraceStore::DigitalWords(qint32 channel) const {
  std::vector<quint32> words(static_cast<std::size_t>(shape_.samples));
  for (qint32 d = 0; d < std::min(shape_.digital, WordBits); ++d) {
    const std::span<const double> trace = Slot(FirstSlot(channel) + 1 + d);
    for (std::size_t s = 0; s < trace.size(); ++s) {
      words[s] |= (trace[s] != 0.0 ? 1U : 0U) << d;
    }
  }
  return words;
}

}  // namespace korvax
