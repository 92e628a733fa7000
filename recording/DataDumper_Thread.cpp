#include "recording/DataDumper_Thread.h"

DataDumper_Thread::DataDumper_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName,
                                     const korvax::Clock& clock)
    : WorkerThread(inputs, korvax::RunRecorder::PossibleFates()),
      clock_(clock),
      control_(*inputs.front(), {.runId = QStringLiteral("0")}),
      recorder_(blockName, control_, statistics_, clock) {}

void DataDumper_Thread::Pause() {
  control_.SetStatus(korvax::DumpStatus::Paused, [this](korvax::DumpSettings&) {
    statistics_.pausedRunningTime = static_cast<qint64>(statistics_.runningTime);
  });
}

void DataDumper_Thread::ReStart() {
  control_.SetStatus(korvax::DumpStatus::Recording,
                     [this](korvax::DumpSettings&) { statistics_.runStart = clock_.SecondsSinceEpoch(); });
}

korvax::RunStatistics DataDumper_Thread::Statistics() const {
  korvax::RunStatistics statistics;
  control_.Locked([&] { statistics = statistics_; });
  return statistics;
}

void DataDumper_Thread::Consume(DataMessage&& message) {
  static const PayloadBatch empty;
  const auto batch = std::move(message.batch);
  recorder_.Take(batch == nullptr ? empty : *batch);
  Book(recorder_.TakeFates());
}
