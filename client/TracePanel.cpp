#include "client/TracePanel.h"

#include "client/ColumnAxis.h"
#include "client/TextFit.h"

#include <algorithm>

namespace korvax::client {

namespace {

constexpr int linesAroundPlot = 3;  // the figures, the axis and its labels
constexpr int smallestPlotHeight = 3;
constexpr int smallestPlotWidth = 4;
const QString axisName = QStringLiteral("sample");

QString ValueText(double value) {
  return QString::number(value, 'g', 10);
}

double Lowest(const Trace& trace) {
  return trace.empty() ? 0 : *std::ranges::min_element(trace);
}

double Highest(const Trace& trace) {
  return trace.empty() ? 0 : *std::ranges::max_element(trace);
}

/// Room for the longest label, a blank and the vertical axis.
int GutterWidth(const std::vector<ValueScale::Tick>& ticks) {
  int longest = axisName.size();
  for (const ValueScale::Tick& tick : ticks) {
    longest = std::max(longest, static_cast<int>(ValueText(tick.value).size()));
  }
  return longest + 2;
}

std::size_t DotRoom(int width, int gutter) {
  const int room = width - gutter;
  return room < smallestPlotWidth ? 0 : static_cast<std::size_t>(room) * DotPlot::columnsPerCharacter;
}

}  // namespace

TracePanel::TracePanel(const ScopeChannel& channel, int width, int height)
    : channel_(channel),
      analog_(channel.traces.analog),
      low_(Lowest(analog_)),
      high_(Highest(analog_)),
      width_(width),
      rows_(std::max(1, height - linesAroundPlot - static_cast<int>(channel.traces.digital.size()))),
      scale_(low_, high_, rows_),
      ticks_(scale_.Ticks()),
      gutter_(GutterWidth(ticks_)),
      layout_(ColumnLayout::Fit(analog_.size(), DotRoom(width_, gutter_))) {}

int TracePanel::SmallestHeight(const ChannelTraces& traces) {
  return linesAroundPlot + smallestPlotHeight + static_cast<int>(traces.digital.size());
}

QStringList TracePanel::Lines() const {
  QStringList lines{HeadLine()};
  if (analog_.empty()) {
    const QString text =
        QStringLiteral("This channel has no samples: see \"sample_number\" in the configuration.");
    lines.append(KeepBeginning(text, width_));
  } else if (layout_.columns == 0) {
    lines.append(KeepBeginning(QStringLiteral("Too narrow for a picture."), width_));
  } else {
    lines += PlotLines();
    lines += DigitalLines();
  }
  return lines;
}

QString TracePanel::HeadLine() const {
  QStringList fields{QStringLiteral("channel %1").arg(channel_.channel)};
  fields.append(QString::number(analog_.size()) +
                (analog_.size() == 1 ? QStringLiteral(" sample") : QStringLiteral(" samples")));
  if (!analog_.empty()) {
    fields.append(QStringLiteral("%1 to %2").arg(ValueText(low_), ValueText(high_)));
  }
  return JoinFitting(fields, width_);
}

QStringList TracePanel::PlotLines() const {
  DotPlot plot(layout_.columns, rows_);
  FillColumns(plot);
  QStringList lines;
  for (int row = rows_; row >= 1; --row) {
    lines.append(Gutter(row, QStringLiteral("│")) + plot.Row(row - 1));
  }
  const AxisText axis = Draw(ColumnAxis{axisName, 0, layout_, gutter_, DotPlot::columnsPerCharacter}, width_);
  return lines << Gutter(0, QStringLiteral("└")) + axis.line << axis.labels;
}

/// A column reaches from the lowest to the highest of its samples and the one before them, so that a trace has
/// no gaps.
void TracePanel::FillColumns(DotPlot& plot) const {
  const int levels = rows_ * DotPlot::dotsPerRow;
  for (std::size_t column = 0; column < layout_.columns; ++column) {
    const std::size_t first = layout_.BinOf(column);
    const std::size_t end = std::min(first + layout_.binsPerColumn, analog_.size());
    const bool joins = first > 0 && column % layout_.columnsPerBin == 0;
    const auto samples = std::span(analog_).subspan(joins ? first - 1 : first, end - first + (joins ? 1 : 0));
    const auto [low, high] = std::ranges::minmax(samples);
    plot.Fill(column, scale_.Level(low, levels), scale_.Level(high, levels));
  }
}

/// What stands left of a row. A tick marks the row's upper edge; row 0 is the axis.
QString TracePanel::Gutter(int row, const QString& unmarked) const {
  const auto tick = std::ranges::find(ticks_, row, &ValueScale::Tick::row);
  if (tick == ticks_.end()) {
    return Blanks(gutter_ - 1) + unmarked;
  }
  const QString label = ValueText(tick->value).rightJustified(gutter_ - 2) + QLatin1Char(' ');
  return label + (row == 0 ? unmarked : QStringLiteral("┤"));
}

QStringList TracePanel::DigitalLines() const {
  QStringList lines;
  for (const Trace& trace : channel_.traces.digital) {
    const QString label = QStringLiteral("D%1").arg(lines.size());
    lines.append(label.rightJustified(gutter_ - 2) + Blanks(2) + Lane(trace));
  }
  return lines;
}

/// One character for all samples below two columns of dots.
QString TracePanel::Lane(const Trace& trace) const {
  const std::size_t characters = (layout_.columns + 1) / DotPlot::columnsPerCharacter;
  const std::size_t lastColumn = layout_.columns - 1;
  QString lane;
  for (std::size_t character = 0; character < characters; ++character) {
    const std::size_t column = character * DotPlot::columnsPerCharacter;
    const std::size_t first = layout_.BinOf(column);
    const std::size_t end = layout_.BinOf(std::min(column + 1, lastColumn)) + layout_.binsPerColumn;
    const auto [low, high] =
        std::ranges::minmax(std::span(trace).subspan(first, std::min(end, trace.size()) - first));
    lane += low != high ? QChar(u'▒') : low == 0 ? QChar(u'▁') : QChar(u'█');
  }
  return lane;
}

}  // namespace korvax::client
