#include "sinks/Histogram.h"

#include "framework/Answers.h"
#include "framework/BlockParameters.h"
#include "framework/ByteWriter.h"
#include "sinks/SinkQuery.h"

#include <iostream>

Histogram::Histogram(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("spectrum"), false, context, parent) {
  ReadCommonKeys(block);
  ParseConfiguration(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &Histogram::NewDataInTheInputPin);
  worker_ = std::make_unique<Histogram_Thread>(Inputs(), binNumber_, channelNumber_);
  if (binNumber_ > 0 && channelNumber_ > 0 && worker_->Counts().IsEmpty()) {
    SetFault(QStringLiteral("\"bin_number\" times \"ch_number\": expected at most %1, and memory for them")
                 .arg(korvax::ChannelHistogram::MostCounters));
  }
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
  const korvax::SinkQuery query = korvax::SinkQuery::Parse(*data_in);
  if (query.command == QLatin1String("get_data")) {
    AppendData(query, *data_out);
  } else if (query.command == QLatin1String("reset")) {
    worker_->ResetCounts();
    data_out->append(korvax::answers::Success());
  } else if (query.command == QLatin1String("data_get_status")) {
    data_out->append(worker_->IsRunning() ? QStringLiteral("[{\"response\": true, \"status\":\"freerun\"}]")
                                          : QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]"));
  } else if (query.command == QLatin1String("run_control")) {
    worker_->SetRunning(query.status == QLatin1String("freerun"));
    data_out->append(korvax::answers::Success());
  }
}

void Histogram::AppendData(const korvax::SinkQuery& query, QString& out) {
  const korvax::ChannelHistogram& counts = worker_->Counts();
  korvax::ByteWriter text;
  const char* separator = "";
  text.Text("[");
  for (const qint32 channel : query.SelectedChannels(counts.Channels())) {
    text.Text(separator).Text("{\"data\":[");
    counts.AppendChannel(channel, text);
    text.Text("]}");
    separator = ",";
  }
  text.Text("]");
  out.append(QLatin1String(text.View().data(), static_cast<int>(text.Size())));
}
