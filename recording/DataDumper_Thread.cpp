#include "recording/DataDumper_Thread.h"

DataDumper_Thread::DataDumper_Thread(const KorvaxBlock::InputPins& inputs, const QString& blockName)
    : WorkerThread(inputs),
      control_(*inputs.front(), {.runId = QStringLiteral("0")}),
      recorder_(blockName, control_, statistics_) {}

void DataDumper_Thread::StartRun(const QString& runId) {
  control_.StartRun(runId, [this] { statistics_ = {.runStart = korvax::Clock::System().SecondsSinceEpoch()}; });
}

void DataDumper_Thread::Pause() {
  control_.SetStatus(korvax::DumpStatus::Paused);
  control_.Locked([this] { statistics_.pausedRunningTime = static_cast<qint64>(statistics_.runningTime); });
}

void DataDumper_Thread::ReStart() {
  control_.SetStatus(korvax::DumpStatus::Recording);
  control_.Locked([this] { statistics_.runStart = korvax::Clock::System().SecondsSinceEpoch(); });
}

korvax::RunStatistics DataDumper_Thread::Statistics() const {
  korvax::RunStatistics statistics;
  control_.Locked([&] { statistics = statistics_; });
  return statistics;
}

void DataDumper_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  if (batch != nullptr) {
    recorder_.Take(*batch);
  }
}
