#include "client/Table.h"

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

QStringList Table::Lines() const {
  std::vector<int> widths(static_cast<std::size_t>(rows_.front().size()), 0);
  for (const QStringList& row : rows_) {
    for (int column = 0; column < row.size(); ++column) {
      int& width = widths[static_cast<std::size_t>(column)];
      width = std::max(width, static_cast<int>(row[column].size()));
    }
  }
  QStringList lines;
  for (const QStringList& row : rows_) {
    QStringList cells;
    for (int column = 0; column < row.size(); ++column) {
      const int width = widths[static_cast<std::size_t>(column)];
      cells.append(column < leftColumns_ ? row[column].leftJustified(width) : row[column].rightJustified(width));
    }
    lines.append(Trimmed(cells.join(columnGap)));
  }
  return lines;
}

}  // namespace korvax::client
