#include "acquisition/EnergyDecoder.h"

#include "acquisition/EnergyCalibration.h"
#include "framework/KorvaxPayload_Energy.h"

namespace acquisition {

namespace {

// The board's own energy, else the expression's, else 0.0.
class EnergyChoice {
public:
  explicit EnergyChoice(const DecodeSettings& settings)
      : useBoardKev_(settings.useBoardKev), calibration_(*settings.calibration) {}

  double operator()(quint32 energyRaw, double boardKev) const {
    return useBoardKev_ ? boardKev : calibration_.Evaluate(energyRaw);
  }

private:
  const bool useBoardKev_;
  EnergyCalibration& calibration_;
};

std::unique_ptr<PayloadBatch> NewBatch(std::size_t events) {
  auto batch = std::make_unique<PayloadBatch>();
  batch->dataType = QLatin1String("energy");
  batch->events.reserve(events);
  return batch;
}

void AppendEvent(const board::EnergyRecord& record, const EnergyChoice& energy, EnergyEvents& events) {
  KorvaxPayload_Energy& event = events.emplace_back();
  event.timestamp = record.timestamp;
  event.channel = record.channel;
  event.energyRaw = record.energyRaw;
  event.energy = energy(record.energyRaw, record.energyKev);
  event.flag0 = record.flag0;
  event.flag1 = record.flag1;
  event.extraWord = record.extraWord;
}

void AppendDetector(const board::EnergyPairRecord& record, quint32 detector, const EnergyChoice& energy,
                    EnergyEvents& events) {
  KorvaxPayload_Energy& event = events.emplace_back();
  event.timestamp = record.timestamp;
  event.channel = record.pair * 2 + detector;
  event.energyRaw = record.energyRaw[detector];
  event.energy = energy(record.energyRaw[detector], record.energyKev[detector]);
  event.flag0 = record.flag0;
  event.flag1 = record.flag1;
  event.extraWord = record.extraWord;
}

}  // namespace

std::size_t DecodeEnergy(std::span<const board::Entry> entries, const DecodeSettings& settings,
                         const BatchSink& sink) {
  const EnergyChoice energy(settings);
  auto batch = NewBatch(entries.size());
  for (const board::Entry& entry : entries) {
    if (const auto* record = static_cast<const board::EnergyRecord*>(entry.record)) {
      AppendEvent(*record, energy, batch->events);
    }
  }
  const std::size_t decoded = batch->events.size();
  batch->timestamp = decoded == 0 ? 0 : batch->events.back().timestamp;
  sink(std::move(batch));
  return decoded;
}

std::size_t DecodeEnergyPair(std::span<const board::Entry> entries, const DecodeSettings& settings,
                             const BatchSink& sink) {
  const EnergyChoice energy(settings);
  std::size_t decoded = 0;
  for (const board::Entry& entry : entries) {
    if (const auto* record = static_cast<const board::EnergyPairRecord*>(entry.record)) {
      auto batch = NewBatch(2);
      batch->timestamp = record->timestamp;
      AppendDetector(*record, 0, energy, batch->events);
      AppendDetector(*record, 1, energy, batch->events);
      sink(std::move(batch));
      ++decoded;
    }
  }
  return decoded;
}

}  // namespace acquisition
