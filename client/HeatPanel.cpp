#include "client/HeatPanel.h"

#include "client/ColumnAxis.h"
#include "client/HeatLegend.h"
#include "client/TextFit.h"

#include <algorithm>

namespace korvax::client {

namespace {

constexpr int linesAroundMap = 5;  // the figures, the upper edge, the axis and its labels, the legend
constexpr int smallestGutter = 8;  // "column", a blank and the vertical axis
constexpr int smallestMapWidth = 4;
constexpr std::size_t linesPerLabel = 2;

int GutterOf(std::size_t rows) {
  return std::max(smallestGutter, static_cast<int>(QString::number(rows).size()) + 2);
}

std::size_t Room(int characters, int smallest) {
  return characters < smallest ? 0 : static_cast<std::size_t>(characters);
}

std::size_t Cells(const ColumnLayout& layout) {
  return layout.columns / layout.columnsPerBin;
}

/// The sums of the counters that share a cell.
std::vector<quint64> Joined(const CountGrid& grid, const ColumnLayout& rows, const ColumnLayout& columns) {
  std::vector<quint64> sums(Cells(rows) * Cells(columns));
  if (sums.empty()) {
    return sums;
  }
  for (std::size_t index = 0; index < grid.counts.size(); ++index) {
    const std::size_t row = index / grid.columns / rows.binsPerColumn;
    sums[row * Cells(columns) + index % grid.columns / columns.binsPerColumn] += grid.counts[index];
  }
  return sums;
}

}  // namespace

HeatPanel::HeatPanel(const HeatView& view, const HeatOptions& options, int width, int height)
    : view_(view),
      width_(width),
      gutter_(GutterOf(view.grid.rows)),
      ink_(options.coloured),
      columns_(ColumnLayout::Fit(view.grid.columns, Room(width - gutter_, smallestMapWidth))),
      rows_(ColumnLayout::Fit(view.grid.rows, Room(std::max(1, height - linesAroundMap), 1) * ink_.RowsPerLine())),
      sums_(Joined(view.grid, rows_, columns_)),
      scale_(Largest(sums_), ink_.Levels(), options.logarithmic) {}

QStringList HeatPanel::Lines() const {
  QStringList lines{HeadLine()};
  if (view_.grid.counts.empty()) {
    lines.append(KeepBeginning(NothingLine(), width_));
  } else if (columns_.columns == 0) {
    lines.append(KeepBeginning(QStringLiteral("Too narrow for a picture."), width_));
  } else {
    lines.append(TopLine());
    lines += MapLines();
    lines += AxisLines();
    lines.append(LegendLine());
  }
  return lines;
}

QString HeatPanel::HeadLine() const {
  const CountGrid& grid = view_.grid;
  const quint64 total = Total(grid.counts);
  QStringList fields{Counted(grid.rows, QStringLiteral("row")) + QStringLiteral(" x ") +
                         Counted(grid.columns, QStringLiteral("column")),
                     Counted(total, QStringLiteral("count"))};
  if (total > 0) {
    const auto fullest = std::ranges::max_element(grid.counts);
    const auto index = static_cast<std::size_t>(fullest - grid.counts.begin());
    const QString field = QStringLiteral("most at row %1, column %2 (%3)");
    fields.append(field.arg(index / grid.columns).arg(index % grid.columns).arg(*fullest));
  }
  if (view_.rate) {
    fields.append(RateText(*view_.rate));
  }
  return JoinFitting(fields, width_);
}

QString HeatPanel::NothingLine() const {
  const bool noRows = view_.grid.rows == 0;
  const QString text = QStringLiteral("This map has no %1: see \"%2\" in the server's configuration.");
  return noRows ? text.arg(QStringLiteral("rows"), QStringLiteral("y_positions"))
                : text.arg(QStringLiteral("columns"), view_.columnsKey);
}

/// The map's upper edge, which tells what a cell is the sum of.
QString HeatPanel::TopLine() const {
  const int room = static_cast<int>(columns_.columns);
  QString note;
  if (rows_.binsPerColumn > 1 || columns_.binsPerColumn > 1) {
    note = QStringLiteral("─ sums of %1 x %2 ")
               .arg(Counted(rows_.binsPerColumn, QStringLiteral("row")),
                    Counted(columns_.binsPerColumn, QStringLiteral("column")));
  }
  const QString edge = (note.size() > room ? QString() : note).leftJustified(room, QChar(u'─'));
  return QStringLiteral("row").rightJustified(gutter_ - 2) + QStringLiteral(" ┌") + edge;
}

QStringList HeatPanel::MapLines() const {
  const std::size_t perLine = ink_.RowsPerLine();
  const std::size_t count = (rows_.columns + perLine - 1) / perLine;
  const QStringList labels = RowLabels(count);
  QStringList lines;
  for (std::size_t line = 0; line < count; ++line) {
    const std::size_t lower = line * perLine + 1;
    const bool isDouble = perLine > 1 && lower < rows_.columns;
    const std::vector<int> second = isDouble ? Levels(lower) : std::vector<int>{};
    lines.append(labels.at(static_cast<int>(line)) + ink_.Line(Levels(line * perLine), second));
  }
  return lines;
}

/// What stands left of each line.
QStringList HeatPanel::RowLabels(std::size_t lines) const {
  QStringList labels;
  for (std::size_t line = 0; line < lines; ++line) {
    labels.append(Blanks(gutter_ - 1) + QStringLiteral("│"));
  }
  const std::size_t step = rows_.RoundStep(linesPerLabel * ink_.RowsPerLine());
  for (std::size_t row = 0; row < rows_.bins; row += step) {
    const auto line = static_cast<int>(rows_.ColumnOf(row) / ink_.RowsPerLine());
    labels[line] = QString::number(row).rightJustified(gutter_ - 2) + QStringLiteral(" ┤");
  }
  return labels;
}

/// Of a row of the picture, one a column.
std::vector<int> HeatPanel::Levels(std::size_t row) const {
  const std::size_t first = row / rows_.columnsPerBin * Cells(columns_);
  std::vector<int> levels;
  levels.reserve(columns_.columns);
  for (std::size_t column = 0; column < columns_.columns; ++column) {
    levels.push_back(scale_.Level(sums_[first + column / columns_.columnsPerBin]));
  }
  return levels;
}

QStringList HeatPanel::AxisLines() const {
  const AxisText axis = Draw(ColumnAxis{QStringLiteral("column"), 0, columns_, gutter_}, width_);
  return {Blanks(gutter_ - 1) + QStringLiteral("└") + axis.line, axis.labels};
}

QString HeatPanel::LegendLine() const {
  const QString begin = QStringLiteral("counts").rightJustified(gutter_ - 2) + Blanks(2);
  return begin + Legend(scale_, ink_, width_ - gutter_);
}

}  // namespace korvax::client
