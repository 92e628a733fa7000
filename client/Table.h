#pragma once

#include <QStringList>

#include <set>
#include <utility>
#include <vector>

namespace korvax::client {

/// Rows of cells below headings. Columns are as wide as their widest cell and stand right, as figures do, but
/// for the first `leftColumns` of them, which stand left. Cells are made harmless to a terminal.
class Table {
public:
  Table(const QStringList& headings, int leftColumns);

  /// A row may have fewer cells than there are headings, but not more.
  void Add(const QStringList& row);

  /// Lets a cell of the row that was added last be noticed: see client/Alarm.h.
  void MarkCell(int column) { marked_.emplace(rows_.size() - 1, column); }

  /// The headings and the rows, without blanks at their ends.
  QStringList Lines(bool coloured = false) const;

private:
  bool IsMarked(std::size_t row, int column) const { return marked_.contains({row, column}); }
  std::vector<int> Widths(bool coloured) const;
  QString Cell(std::size_t row, int column, int width, bool coloured) const;

  int leftColumns_;
  std::vector<QStringList> rows_;
  std::set<std::pair<std::size_t, int>> marked_;
};

}  // namespace korvax::client
