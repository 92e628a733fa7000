#pragma once

#include "client/ColumnLayout.h"
#include "client/HeatInk.h"
#include "client/HeatPicture.h"
#include "client/HeatScale.h"

namespace korvax::client {

/// A heat map: a line of figures, the map with the numbers of its rows and columns, what the colours mean. Rows
/// and columns that don't fit are joined: a cell shows the sum of its counters. Refers to the view that it is
/// made of, so lives no longer.
class HeatPanel {
public:
  /// `height` in lines; at least one line of the map is drawn, whatever it says.
  HeatPanel(const HeatView& view, const HeatOptions& options, int width, int height);

  QStringList Lines() const;

private:
  QString HeadLine() const;
  QString NothingLine() const;
  QString TopLine() const;
  QStringList MapLines() const;
  QStringList RowLabels(std::size_t lines) const;
  std::vector<int> Levels(std::size_t row) const;
  QStringList AxisLines() const;
  QString LegendLine() const;

  const HeatView& view_;
  const int width_;
  const int gutter_;
  const HeatInk ink_;
  const ColumnLayout columns_;
  const ColumnLayout rows_;          ///< its columns are the rows of the picture
  const std::vector<quint64> sums_;  ///< cell by cell, row after row
  const HeatScale scale_;
};

}  // namespace korvax::client
