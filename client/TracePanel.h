#pragma once

#include "client/ColumnLayout.h"
#include "client/DotPlot.h"
#include "client/ScopePicture.h"
#include "client/ValueScale.h"

namespace korvax::client {

/// One channel's part of a picture: a line of figures, the analog trace, the axis of the samples, a line a
/// digital trace. Refers to the channel that it is made of, so lives no longer.
class TracePanel {
public:
  /// `height` in lines; at least one row of the analog trace is drawn, whatever it says.
  TracePanel(const ScopeChannel& channel, int width, int height);

  QStringList Lines() const;

  /// The lines that a channel with such traces takes, with few rows for the analog one.
  static int SmallestHeight(const ChannelTraces& traces);

private:
  QString HeadLine() const;
  QStringList PlotLines() const;
  QStringList DigitalLines() const;
  QString Gutter(int row, const QString& unmarked) const;
  QString Lane(const Trace& trace) const;
  void FillColumns(DotPlot& plot) const;

  const ScopeChannel& channel_;
  const Trace& analog_;
  const double low_;
  const double high_;
  const int width_;
  const int rows_;
  const ValueScale scale_;
  const std::vector<ValueScale::Tick> ticks_;
  const int gutter_;
  const ColumnLayout layout_;  ///< of columns of dots
};

}  // namespace korvax::client
