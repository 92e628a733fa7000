#include "client/Table.h"

#include "client/Alarm.h"
#include "client/TextFit.h"

namespace korvax::client {

namespace {

const QString columnGap = QStringLiteral("  ");

QString Trimmed(QString line) {
  while (line.endsWith(QLatin1Char(' '))) {
    line.chop(1);
  }
  return line;
}

}  // namespace

Table::Table(const QStringList& headings, int leftColumns) : leftColumns_(leftColumns) {
  Add(headings);
}

void Table::Add(const QStringList& row) {
  rows_.push_back(row);
  for (QString& cell : rows_.back()) {
    cell = Harmless(cell);
  }
}

std::vector<int> Table::Widths(bool coloured) const {
  std::vector<int> widths(static_cast<std::size_t>(rows_.front().size()), 0);
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (int column = 0; column < rows_[row].size(); ++column) {
      const int sign = IsMarked(row, column) && !coloured ? 1 : 0;
      int& width = widths[static_cast<std::size_t>(column)];
      width = std::max(width, static_cast<int>(rows_[row][column].size()) + sign);
    }
  }
  return widths;
}

QString Table::Cell(std::size_t row, int column, int width, bool coloured) const {
  const QString& text = rows_[row][column];
  const bool marked = IsMarked(row, column);
  const QString shown = marked ? Alarm(text, coloured) : text;
  const QString blanks = Blanks(width - static_cast<int>(text.size()) - (marked && !coloured ? 1 : 0));
  return column < leftColumns_ ? shown + blanks : blanks + shown;
}

QStringList Table::Lines(bool coloured) const {
  const std::vector<int> widths = Widths(coloured);
  QStringList lines;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    QStringList cells;
    for (int column = 0; column < rows_[row].size(); ++column) {
      cells.append(Cell(row, column, widths[static_cast<std::size_t>(column)], coloured));
    }
    lines.append(Trimmed(cells.join(columnGap)));
  }
  return lines;
}

}  // namespace korvax::client
