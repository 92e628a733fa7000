#include "sinks/Image.h"

#include "framework/BlockParameters.h"
#include "sinks/SinkData.h"

Image::Image(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : AnalysisSink(QStringLiteral("image"), context, block, parent) {
  ParseParameters(block);
  connect(Inputs().front().get(), &PinInput::DataReady, this, &Image::NewDataInTheInputPin);
  worker_ = Start(std::make_unique<Image_Thread>(Inputs(), static_cast<qint32>(yPositions_.size()),
                                                 static_cast<qint32>(xPositions_.size())));
  SetFault(worker_->Fault());
}

bool Image::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(block, {{QLatin1String("x_positions"),
                                   [this](const QJsonValue& value) { xPositions_ = korvax::Integers(value); }},
                                  {QLatin1String("y_positions"),
                                   [this](const QJsonValue& value) { yPositions_ = korvax::Integers(value); }}});
  return true;
}

QJsonObject Image::Shape() const {
  return korvax::RowsAndColumns(worker_->Cumulative());
}

void Image::AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) {
  if (query.source == QLatin1String("immediate")) {
    korvax::AppendAllRows(worker_->TakeImmediate(), out);
  } else if (query.source == QLatin1String("cumulative")) {
    korvax::AppendAllRows(worker_->Cumulative(), out);
  }
}
