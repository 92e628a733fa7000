#include "acquisition/EnergyDecoder.h"

#include "acquisition/EnergyCalibration.h"
#include "framework/KorvaxPayload_Energy.h"

namespace acquisition {

namespace {

// The board's own energy, else the expression's, else 0.0.
class EnergyChoice {
public:
  explicit EnergyChoice(const DecodeSettings& settings)
      : useBoardKev_(settings.useBoardKev), calibration_(settings.expression) {}

  double operator()(quint32 energyRaw, double boardKev) {
    return useBoardKev_ ? boardKev : calibration_.Evaluate(energyRaw);
  }

private:
  const bool useBoardKev_;
  EnergyCalibration calibration_;
};

std::unique_ptr<PayloadBatch> NewBatch(std::size_t records) {
  auto batch = std::make_unique<PayloadBatch>();
  batch->dataType = QLatin1String("energy");
  batch->records.reserve(records);
  return batch;
}

std::unique_ptr<KorvaxPayload> EnergyOf(const board::EnergyRecord& record, EnergyChoice& energy) {
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->timestamp = record.timestamp;
  event->channel = record.channel;
  event->energyRaw = record.energyRaw;
  event->energy = energy(record.energyRaw, record.energyKev);
  event->flag0 = record.flag0;
  event->flag1 = record.flag1;
  event->extraWord = record.extraWord;
  return event;
}

std::unique_ptr<KorvaxPayload> DetectorOf(const board::EnergyPairRecord& record, quint32 detector,
                                          EnergyChoice& energy) {
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->timestamp = record.timestamp;
  event->channel = record.pair * 2 + detector;
  event->energyRaw = record.energyRaw[detector];
  event->energy = energy(record.energyRaw[detector], record.energyKev[detector]);
  event->flag0 = record.flag0;
  event->flag1 = record.flag1;
  event->extraWord = record.extraWord;
  return event;
}

}  // namespace

void DecodeEnergy(std::span<const board::Entry> entries, const DecodeSettings& settings, const BatchSink& sink) {
  EnergyChoice energy(settings);
  auto batch = NewBatch(entries.size());
  for (const board::Entry& entry : entries) {
    if (const auto* record = static_cast<const board::EnergyRecord*>(entry.record)) {
      batch->timestamp = record->timestamp;
      batch->records.push_back(EnergyOf(*record, energy));
    }
  }
  sink(std::move(batch));
}

void DecodeEnergyPair(std::span<const board::Entry> entries, const DecodeSettings& settings,
                      const BatchSink& sink) {
  EnergyChoice energy(settings);
  for (const board::Entry& entry : entries) {
    if (const auto* record = static_cast<const board::EnergyPairRecord*>(entry.record)) {
      auto batch = NewBatch(2);
      batch->timestamp = record->timestamp;
      batch->records.push_back(DetectorOf(*record, 0, energy));
      batch->records.push_back(DetectorOf(*record, 1, energy));
      sink(std::move(batch));
    }
  }
}

}  // namespace acquisition
