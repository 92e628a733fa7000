#pragma once

#include "framework/KorvaxPayload_Wave.h"

#include <span>
#include <vector>

class KorvaxPayload_Waves;

namespace korvax {

/// How many of what an oscilloscope holds.
struct TraceShape {
  qint32 samples = 0;  ///< of a trace
  qint32 channels = 0;
  qint32 analog = 0;   ///< traces of a channel; the slots are laid out for 1
  qint32 digital = 0;  ///< traces of a channel
};

/// The latest traces of all channels, which clients see in slots of `samples` doubles: (analog + digital) slots a
/// channel. Those of channel c begin at slot (digital + 1) * c: the analog trace, then the digital ones as 0.0
/// or 1.0. A slot that the shape has no room for is empty. Keeps samples as they came, and makes slots of them
/// when it is asked for some. Not thread-safe.
class TraceStore {
public:
  /// A store of more doubles than this, of more channels or traces of a channel than the second number, or than
  /// memory has room for, has no slots.
  static constexpr qint64 MostSamples = qint64{1} << 24;
  static constexpr qint32 MostTraces = 1 << 20;

  /// Negative numbers count as 0.
  explicit TraceStore(TraceShape shape);

  const TraceShape& Shape() const { return shape_; }
  bool IsTooLarge() const { return tooLarge_; }

  /// Takes the samples of every wave out of it, where it has as many as the store keeps, and copies them else;
  /// waves beyond the channels and samples beyond the traces are passed over, what a wave doesn't reach stays.
  void Store(KorvaxPayload_Waves& waves);

  std::vector<double> Slot(qint64 slot) const;

  // What run files hold of a channel.
  std::span<const double> Analog(qint32 channel) const;
  /// A word a sample, digital trace d as bit d; of more than 32 traces the low 32.
  std::vector<quint32> DigitalWords(qint32 channel) const;

private:
  struct Channel {
    WaveSamples<double> analog;
    WaveSamples<quint32> words;
  };

  qint64 FirstSlot(qint32 channel) const { return (qint64{shape_.digital} + 1) * channel; }
  qint64 SlotCount() const { return qint64{shape_.channels} * (qint64{shape_.analog} + shape_.digital); }
  bool HasSlot(qint64 slot) const { return !channels_.empty() && slot >= 0 && slot < SlotCount(); }
  quint32 WordMask(qint32 channel) const;

  const TraceShape shape_;
  bool tooLarge_ = false;
  std::vector<Channel> channels_;  // empty when there is no slot, or none has samples
};

}  // namespace korvax
