#include "recording/SinkRateCounter_Thread.h"

SinkRateCounter_Thread::SinkRateCounter_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName,
                                               std::size_t historyDepth)
    : WorkerThread(inputs, korvax::RunRecorder::PossibleFates()),
      control_(*inputs.front(), {.filePath = QStringLiteral("/tmp"), .runId = QStringLiteral("run_0")}),
      history_(historyDepth),
      recorder_(blockName, control_) {}

void SinkRateCounter_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  std::vector<korvax::RateHistory::Record> rates;
  if (batch != nullptr) {
    for (auto& record : batch->records) {
      if (record->PayloadKind() == KorvaxPayload::Kind::RateCounters) {
        // The history shares the record instead of copying it: nobody else holds it.
        rates.emplace_back(static_cast<const KorvaxPayload_RateCounters*>(record.release()));
        history_.Add(rates.back());
      }
    }
  }
  recorder_.Take(rates);
  Book(recorder_.TakeFates());
  Book(korvax::Fate::Other, batch == nullptr ? 0 : batch->Size() - rates.size());
}
