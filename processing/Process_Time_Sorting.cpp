#include "processing/Process_Time_Sorting.h"

#include "framework/BlockParameters.h"

#include <cmath>

Process_Time_Sorting::Process_Time_Sorting(QObject* parent, const ChainContext& context, const QJsonValue& block,
                                           const korvax::Clock& clock)
    : KorvaxBlock(QStringLiteral("time_sorting"), false, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  const PinInput& input = AddInput();
  AddOutput();
  connect(&input, &PinInput::DataReady, this, &Process_Time_Sorting::NewDataInTheInputPin);
  worker_ = std::make_unique<Time_Sorting_Thread>(Inputs(), Outputs(), Name(), settings_, clock);
  worker_->start(korvax::StreamPriority);
}

Process_Time_Sorting::~Process_Time_Sorting() {
  StopWorker();
}

bool Process_Time_Sorting::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block, {{QLatin1String("n_windows"), [this](const QJsonValue& value) { settings_.windows = value.toInt(); }},
              {QLatin1String("timestamp_delta"),
               [this](const QJsonValue& value) { settings_.timestampDelta = std::trunc(value.toDouble()); }}});
  return true;
}

void Process_Time_Sorting::StopWorker() {
  worker_->Stop();
}

void Process_Time_Sorting::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}
