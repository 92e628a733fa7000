#include "acquisition/RateDecoder.h"

#include "acquisition/AcquisitionClock.h"
#include "framework/KorvaxPayload_RateCounters.h"

#include <algorithm>

namespace acquisition {

namespace {

// A series whose array the board didn't give stays zero.
void CopyAsDouble(const quint64* counters, std::vector<double>& series) {
  if (counters != nullptr) {
    std::transform(counters, counters + series.size(), series.begin(),
                   [](quint64 count) { return static_cast<double>(count); });
  }
}

void CopyWithRates(const quint64* counters, double seconds, std::vector<quint64>& counts,
                   std::vector<double>& rates) {
  if (counters != nullptr) {
    std::copy_n(counters, counts.size(), counts.begin());
    std::transform(counts.begin(), counts.end(), rates.begin(),
                   [seconds](quint64 count) { return static_cast<double>(count) / seconds; });
  }
}

std::unique_ptr<KorvaxPayload> RatesOf(const board::RateRecord& record, quint64 timestamp, double seconds) {
  auto rates = std::make_unique<KorvaxPayload_RateCounters>(record.channels);
  rates->timestamp = timestamp;
  rates->interval = seconds;
  CopyAsDouble(record.arrays[0], rates->startRatesIn);
  CopyAsDouble(record.arrays[1], rates->startRatesOut);
  CopyWithRates(record.arrays[2], seconds, rates->countersIn, rates->ratesIn);
  CopyWithRates(record.arrays[3], seconds, rates->countersOut, rates->ratesOut);
  return rates;
}

}  // namespace

std::size_t DecodeRateCounters(std::span<const board::Entry> entries, const AcquisitionClock& clock,
                               const BatchSink& sink) {
  std::size_t decoded = 0;
  for (const board::Entry& entry : entries) {
    const auto* record = static_cast<const board::RateRecord*>(entry.record);
    if (record == nullptr || record->channels == 0 || record->channels > MostRateChannels) {
      continue;
    }
    const double seconds = static_cast<double>(clock.ElapsedMs()) / 1000.0 + 0.001;
    auto batch = std::make_unique<PayloadBatch>();
    batch->dataType = QLatin1String("rate_counters");
    batch->timestamp = entry.timestamp;
    batch->records.push_back(RatesOf(*record, entry.timestamp, seconds));
    sink(std::move(batch));
    ++decoded;
  }
  return decoded;
}

}  // namespace acquisition
