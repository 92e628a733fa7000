#pragma once

#include "client/CountingView.h"
#include "client/HeatPicture.h"

namespace korvax::client {

/// A position map or an image.
class HeatMapView : public CountingView {
public:
  HeatMapView(const ServerAddress& server, HeatMapRequest request, Console& console);

private:
  QString CountsQuery() const override;
  Ending TakeCounts(const QString& answer) override;
  void Accept() override;
  QStringList Lines() const override;

  /// An immediate image is emptied by reading: it holds what was counted since.
  bool IsEmptiedByReading() const { return request_.source == MapSource::ImmediateImage; }

  const HeatMapRequest request_;
  const bool coloured_;
  CountGrid taken_;
  HeatView view_;
};

}  // namespace korvax::client
