#include "sinks/time_distribution.h"

#include "framework/BlockParameters.h"
#include "sinks/SinkData.h"

time_distribution::time_distribution(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : AnalysisSink(QStringLiteral("tof_histogram"), context, block, parent) {
  ParseParameters(block);
  connect(Inputs().front().get(), &PinInput::DataReady, this, &time_distribution::NewDataInTheInputPin);
  worker_ =
      Start(std::make_unique<time_distribution_Thread>(Inputs(), korvax::HistogramShape::FromParameters(block)));
  SetFault(worker_->Counts().Fault(QStringLiteral("\"ch_number\" times \"bin_number\"")));
  worker_->SetBinning(binning_);
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

QJsonObject time_distribution::Shape() const {
  QJsonObject shape = korvax::ChannelsAndBins(worker_->Counts());
  shape.insert(QStringLiteral("binning"), binning_);
  return shape;
}

void time_distribution::AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) {
  korvax::AppendSelectedRows(worker_->Counts(), query, out);
}
