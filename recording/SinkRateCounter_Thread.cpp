#include "recording/SinkRateCounter_Thread.h"

SinkRateCounter_Thread::SinkRateCounter_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName,
                                               std::size_t historyDepth)
    : WorkerThread(inputs),
      control_(*inputs.front(), {.filePath = QStringLiteral("/tmp"), .runId = QStringLiteral("run_0")}),
      history_(historyDepth),
      recorder_(blockName, control_) {}

void SinkRateCounter_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  if (batch == nullptr) {
    return;
  }
  std::vector<korvax::RateHistory::Record> kept;
  std::vector<const KorvaxPayload_RateCounters*> records;
  for (auto& record : batch->records) {
    if (const auto* rates = korvax::PayloadCast<KorvaxPayload_RateCounters>(record.get())) {
      // The history takes the record over instead of a copy: nobody else holds it.
      record.release();
      kept.emplace_back(rates);
      records.push_back(rates);
      history_.Add(kept.back());
    }
  }
  if (!records.empty()) {
    recorder_.Take(records);
  }
}
