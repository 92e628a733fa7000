#include "sinks/Image.h"

#include "framework/BlockParameters.h"
#include "sinks/SinkAnswers.h"

Image::Image(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("image"), false, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &Image::NewDataInTheInputPin);
  worker_ = std::make_unique<Image_Thread>(Inputs(), static_cast<qint32>(yPositions_.size()),
                                           static_cast<qint32>(xPositions_.size()));
  SetFault(worker_->Fault());
  worker_->start(korvax::StreamPriority);
}

Image::~Image() {
  StopWorker();
}

bool Image::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(block, {{QLatin1String("x_positions"),
                                   [this](const QJsonValue& value) { xPositions_ = korvax::Integers(value); }},
                                  {QLatin1String("y_positions"),
                                   [this](const QJsonValue& value) { yPositions_ = korvax::Integers(value); }}});
  return true;
}

void Image::StopWorker() {
  worker_->Stop();
}

void Image::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

void Image::InterpretMessage(QString* data_in, QString* data_out) {
  const auto appendData = [this](const korvax::SinkQuery& query, korvax::ByteWriter& out) {
    AppendData(query, out);
  };
  korvax::AnswerSinkQuery(*data_in, *worker_, appendData, *data_out);
}

void Image::AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) {
  if (query.source == QLatin1String("immediate")) {
    korvax::AppendAllRows(worker_->TakeImmediate(), out);
  } else if (query.source == QLatin1String("cumulative")) {
    korvax::AppendAllRows(worker_->Cumulative(), out);
  }
}
