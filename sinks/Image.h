#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "sinks/Image_Thread.h"

namespace korvax {
struct SinkQuery;
}

/// The channels of a pixelated detector as a picture, counted since the last reading ("immediate") and since the
/// last reset ("cumulative"). Counts nothing until a client sets it running.
class Image : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  Image(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~Image() override;

  /// "x_positions" and "y_positions": one entry per column and per row, of any value; fixed at construction.
  /// Always true.
  bool ParseParameters(const QJsonValue& block) override;
  void StopWorker() override;

public slots:
  void NewDataInTheInputPin(int FifoLevel);
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  void AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out);

  std::vector<qint32> xPositions_;
  std::vector<qint32> yPositions_;
  std::unique_ptr<Image_Thread> worker_;
};
