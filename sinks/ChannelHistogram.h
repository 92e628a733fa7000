#pragma once

#include <QtGlobal>

#include <atomic>
#include <cstdlib>
#include <memory>

namespace korvax {
class ByteWriter;

/// Counters of channels × bins, unsigned 32-bit, wrapping. One thread at a time counts or resets; any thread
/// reads.
class ChannelHistogram {
public:
  /// The most counters that one histogram may have: all of them as text still fit one answer.
  static constexpr qint64 MostCounters = qint64{1} << 26;

  /// Zeroed. Holds no counters when a direction is 0 or less, when there would be more than MostCounters, or
  /// when there is no memory for them.
  ChannelHistogram(qint32 channels, qint32 bins);

  bool IsEmpty() const { return counters_ == nullptr; }
  qint32 Channels() const { return channels_; }
  qint32 Bins() const { return bins_; }

  /// Adds 1. Indices must be inside.
  void Count(qint32 channel, qint32 bin) {
    std::atomic<quint32>& counter = counters_.get()[Index(channel, bin)];
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  }
  quint32 At(qint32 channel, qint32 bin) const {
    return counters_.get()[Index(channel, bin)].load(std::memory_order_relaxed);
  }
  void Reset();

  /// Appends one channel's counts as signed decimals separated by ",".
  void AppendChannel(qint32 channel, ByteWriter& out) const;

private:
  std::size_t Index(qint32 channel, qint32 bin) const {
    return static_cast<std::size_t>(channel) * static_cast<std::size_t>(bins_) + static_cast<std::size_t>(bin);
  }

  struct Free {
    void operator()(std::atomic<quint32>* counters) const { std::free(counters); }
  };

  qint32 channels_;
  qint32 bins_;
  std::unique_ptr<std::atomic<quint32>, Free> counters_;
};

}  // namespace korvax
