#pragma once

#include "client/ColumnLayout.h"
#include "client/CountScale.h"
#include "client/SpectrumPicture.h"

namespace korvax::client {

/// One channel's part of a picture: a line of figures, the columns, the axis of the bins. Refers to the view
/// that it is made of, so lives no longer.
class ChannelPanel {
public:
  /// `height` in lines; at least one row of columns is drawn, whatever it says.
  ChannelPanel(const ChannelView& view, const PictureOptions& options, int height);

  QStringList Lines() const;

private:
  QString HeadLine() const;
  QString NothingLine() const;
  QStringList PlotLines() const;
  QString Gutter(int row, const QString& unmarked) const;
  QString PlotRow(int row) const;
  QStringList AxisLines() const;

  const ChannelView& view_;
  const std::span<const quint32> shown_;
  const std::size_t firstBin_;
  const int width_;
  const int rows_;
  const ColumnLayout layout_;
  const std::vector<quint64> sums_;
  const CountScale scale_;
  const std::vector<CountScale::Tick> ticks_;
};

}  // namespace korvax::client
