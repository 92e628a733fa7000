#include "sinks/Histogram.h"

#include "framework/BlockParameters.h"
#include "sinks/SinkAnswers.h"

#include <iostream>

Histogram::Histogram(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("spectrum"), false, context, parent) {
  ReadCommonKeys(block);
  ParseConfiguration(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &Histogram::NewDataInTheInputPin);
  worker_ = std::make_unique<Histogram_Thread>(Inputs(), binNumber_, channelNumber_);
  SetFault(worker_->Counts().Fault(QStringLiteral("\"bin_number\" times \"ch_number\"")));
  worker_->SetGain(gain_);
  worker_->SetCuts(energyCutMin_, energyCutMax_);
  worker_->start(korvax::StreamPriority);
}

Histogram::~Histogram() {
  StopWorker();
}

void Histogram::ParseConfiguration(const QJsonValue& block) {
  korvax::ApplyParameters(
      block, {{QLatin1String("bin_number"), [this](const QJsonValue& value) { binNumber_ = value.toInt(); }},
              {QLatin1String("ch_number"), [this](const QJsonValue& value) { channelNumber_ = value.toInt(); }}});
  ParseParameters(block);
}

bool Histogram::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block,
      {{QLatin1String("gain"),
        [this](const QJsonValue& value) {
          gain_ = value.toDouble();
          if (worker_) {
            worker_->SetGain(gain_);
          }
        }},
       {QLatin1String("energy_cut_min"),
        [this](const QJsonValue& value) { SetCut(energyCutMin_, "Spectrum energy_cut_min: ", value.toDouble()); }},
       {QLatin1String("energy_cut_max"), [this](const QJsonValue& value) {
          SetCut(energyCutMax_, "Spectrum energy_cut_max: ", value.toDouble());
        }}});
  return true;
}

void Histogram::SetCut(double& cut, const char* label, double value) {
  cut = value;
  std::cout << label << value << std::endl;
  if (worker_) {
    worker_->SetCuts(energyCutMin_, energyCutMax_);
  }
}

void Histogram::StopWorker() {
  worker_->Stop();
}

void Histogram::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

void Histogram::InterpretMessage(QString* data_in, QString* data_out) {
  const auto appendData = [this](const korvax::SinkQuery& query, korvax::ByteWriter& out) {
    korvax::AppendSelectedRows(worker_->Counts(), query, out);
  };
  korvax::AnswerSinkQuery(*data_in, *worker_, appendData, *data_out);
}
