#include "sinks/ChannelHistogram.h"

#include "framework/ByteWriter.h"

namespace korvax {

static_assert(sizeof(std::atomic<quint32>) == sizeof(quint32) && std::atomic<quint32>::is_always_lock_free);

namespace {

// From calloc, so that channels that never count cost no memory; all-zero bytes are zero counters.
std::atomic<quint32>* ZeroedCounters(qint32 channels, qint32 bins) {
  if (channels <= 0 || bins <= 0 || qint64{channels} * bins > ChannelHistogram::MostCounters) {
    return nullptr;
  }
  void* const memory =
      std::calloc(static_cast<std::size_t>(channels) * static_cast<std::size_t>(bins), sizeof(quint32));
  return static_cast<std::atomic<quint32>*>(memory);
}

}  // namespace

ChannelHistogram::ChannelHistogram(qint32 channels, qint32 bins)
    : channels_(channels), bins_(bins), counters_(ZeroedCounters(channels, bins)) {}

void ChannelHistogram::Reset() {
  if (IsEmpty()) {
    return;
  }
  const std::size_t size = Index(channels_, 0);
  for (std::size_t i = 0; i < size; ++i) {
    counters_.get()[i].store(0, std::memory_order_relaxed);
  }
}

void ChannelHistogram::AppendChannel(qint32 channel, ByteWriter& out) const {
  for (qint32 bin = 0; !IsEmpty() && bin < bins_; ++bin) {
    if (bin != 0) {
      out.Text(",");
    }
    out.Decimal(static_cast<qint32>(At(channel, bin)));
  }
}

}  // namespace korvax
