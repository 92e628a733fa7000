#include "sinks/time_distribution.h"

#include "framework/BlockParameters.h"
#include "sinks/SinkAnswers.h"

time_distribution::time_distribution(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("tof_histogram"), false, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &time_distribution::NewDataInTheInputPin);
  worker_ = std::make_unique<time_distribution_Thread>(Inputs(), korvax::HistogramShape::FromParameters(block));
  SetFault(worker_->Counts().Fault(QStringLiteral("\"ch_number\" times \"bin_number\"")));
  worker_->SetBinning(binning_);
  worker_->start(korvax::StreamPriority);
}

time_distribution::~time_distribution() {
  StopWorker();
}

bool time_distribution::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block, {{QLatin1String("binning"), [this](const QJsonValue& value) { SetBinning(value.toDouble()); }}});
  return true;
}

void time_distribution::SetBinning(double binning) {
  binning_ = binning;
  if (worker_) {
    worker_->SetBinning(binning_);
  }
}

void time_distribution::StopWorker() {
  worker_->Stop();
}

void time_distribution::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

void time_distribution::InterpretMessage(QString* data_in, QString* data_out) {
  const auto appendData = [this](const korvax::SinkQuery& query, korvax::ByteWriter& out) {
    korvax::AppendSelectedRows(worker_->Counts(), query, out);
  };
  korvax::AnswerSinkQuery(*data_in, *worker_, appendData, *data_out);
}
