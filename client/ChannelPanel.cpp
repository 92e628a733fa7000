#include "client/ChannelPanel.h"

#include "client/ColumnAxis.h"
#include "client/TextFit.h"

#include <algorithm>

namespace korvax::client {

namespace {

constexpr int linesAroundPlot = 3;                    // the figures, the axis and its labels
constexpr int gutter = CountScale::longestLabel + 2;  // and a blank and the vertical axis
constexpr int smallestPlotWidth = 4;
constexpr int eighthsPerRow = 8;

std::size_t PlotRoom(int width) {
  return width < gutter + smallestPlotWidth ? 0 : static_cast<std::size_t>(width - gutter);
}

}  // namespace

ChannelPanel::ChannelPanel(const ChannelView& view, const PictureOptions& options, int height)
    : view_(view),
      shown_(Shown(view.counts, options.range)),
      firstBin_(static_cast<std::size_t>(options.range.first)),
      width_(options.width),
      rows_(std::max(1, height - linesAroundPlot)),
      layout_(ColumnLayout::Fit(shown_.size(), PlotRoom(width_))),
      sums_(layout_.columns > 0 ? layout_.Sums(shown_) : std::vector<quint64>{}),
      scale_(Largest(sums_), rows_, options.logarithmic),
      ticks_(scale_.Ticks()) {}

QStringList ChannelPanel::Lines() const {
  QStringList lines{HeadLine()};
  if (shown_.empty()) {
    lines.append(KeepBeginning(NothingLine(), width_));
  } else if (layout_.columns == 0) {
    lines.append(KeepBeginning(QStringLiteral("Too narrow for a picture."), width_));
  } else {
    lines += PlotLines();
    lines += AxisLines();
  }
  return lines;
}

QString ChannelPanel::HeadLine() const {
  QStringList fields{QStringLiteral("channel %1").arg(view_.channel)};
  if (!shown_.empty() && shown_.size() < view_.counts.size()) {
    fields[0] += QStringLiteral(", bins %1-%2").arg(firstBin_).arg(firstBin_ + shown_.size() - 1);
  }
  fields.append(Counted(Total(shown_), QStringLiteral("count")));
  const auto fullest = std::ranges::max_element(shown_);
  if (fullest != shown_.end() && *fullest > 0) {
    const std::size_t bin = firstBin_ + static_cast<std::size_t>(fullest - shown_.begin());
    fields.append(QStringLiteral("fullest bin %1 (%2)").arg(bin).arg(*fullest));
  }
  if (view_.rate) {
    fields.append(RateText(*view_.rate));
  }
  if (layout_.binsPerColumn > 1) {
    fields.append(QStringLiteral("%1 bins/column").arg(layout_.binsPerColumn));
  }
  return JoinFitting(fields, width_);
}

QString ChannelPanel::NothingLine() const {
  if (view_.counts.empty()) {
    return QStringLiteral("This channel has no bins: see \"bin_number\" in the server's configuration.");
  }
  return QStringLiteral("No bin %1: the last bin is %2.").arg(firstBin_).arg(view_.counts.size() - 1);
}

QStringList ChannelPanel::PlotLines() const {
  QStringList lines;
  for (int row = rows_; row >= 1; --row) {
    lines.append(Gutter(row, QStringLiteral("│")) + PlotRow(row));
  }
  return lines;
}

/// What stands left of a row. A tick marks the row's upper edge; row 0 is the axis.
QString ChannelPanel::Gutter(int row, const QString& unmarked) const {
  const auto tick = std::ranges::find(ticks_, row, &CountScale::Tick::row);
  if (tick == ticks_.end()) {
    return Blanks(gutter - 1) + unmarked;
  }
  const QString label = TickLabel(tick->value).rightJustified(gutter - 2) + QLatin1Char(' ');
  return label + (row == 0 ? unmarked : QStringLiteral("┤"));
}

QString ChannelPanel::PlotRow(int row) const {
  static const QString blocks = QStringLiteral(" ▁▂▃▄▅▆▇█");
  QString line;
  int used = 0;
  for (const quint64 sum : sums_) {
    const int level = std::clamp(scale_.Eighths(sum) - (row - 1) * eighthsPerRow, 0, eighthsPerRow);
    line += blocks.at(level);
    used = level > 0 ? static_cast<int>(line.size()) : used;
  }
  return line.left(used);
}

QStringList ChannelPanel::AxisLines() const {
  const AxisText axis = Draw(ColumnAxis{QStringLiteral("bin"), firstBin_, layout_, gutter}, width_);
  return {Gutter(0, QStringLiteral("└")) + axis.line, axis.labels};
}

}  // namespace korvax::client
