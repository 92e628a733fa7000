#pragma once

#include "sinks/AnalysisSink.h"
#include "sinks/Image_Thread.h"

/// The channels of a pixelated detector as a picture, counted since the last reading ("immediate") and since the
/// last reset ("cumulative"). Counts nothing until a client sets it running.
class Image : public korvax::AnalysisSink {
  Q_OBJECT

public:
  Image(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// "x_positions" and "y_positions": one entry per column and per row, of any value; fixed at construction.
  /// Always true.
  bool ParseParameters(const QJsonValue& block) override;
  QJsonObject Shape() const override;

public slots:
  void NewDataInTheInputPin(int FifoLevel) { Wake(FifoLevel); }
  void InterpretMessage(QString* data_in, QString* data_out) override { Answer(*data_in, *data_out); }

protected:
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) override;

private:
  std::vector<qint32> xPositions_;
  std::vector<qint32> yPositions_;
  Image_Thread* worker_ = nullptr;  // the base owns it
};
