#include "sinks/Histogram.h"

#include "framework/BlockParameters.h"
#include "sinks/SinkData.h"

#include <iostream>

Histogram::Histogram(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : AnalysisSink(QStringLiteral("spectrum"), context, block, parent) {
  ParseParameters(block);
  connect(Inputs().front().get(), &PinInput::DataReady, this, &Histogram::NewDataInTheInputPin);
  worker_ = Start(std::make_unique<Histogram_Thread>(Inputs(), korvax::HistogramShape::FromParameters(block)));
  SetFault(worker_->Counts().Fault(QStringLiteral("\"ch_number\" times \"bin_number\"")));
  worker_->SetGain(gain_);
  worker_->SetCuts(energyCutMin_, energyCutMax_);
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

QJsonObject Histogram::Shape() const {
  QJsonObject shape = korvax::ChannelsAndBins(worker_->Counts());
  shape.insert(QStringLiteral("gain"), gain_);
  return shape;
}

void Histogram::AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) {
  korvax::AppendSelectedRows(worker_->Counts(), query, out);
}
