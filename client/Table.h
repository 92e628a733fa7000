#pragma once

#include <QStringList>

#include <vector>

namespace korvax::client {

/// Rows of cells below headings. Columns are as wide as their widest cell and stand right, as figures do, but
/// for the first `leftColumns` of them, which stand left. Cells are made harmless to a terminal.
class Table {
public:
  Table(const QStringList& headings, int leftColumns);

  /// A row may have fewer cells than there are headings, but not more.
  void Add(const QStringList& row);

  /// The headings and the rows, without blanks at their ends.
  QStringList Lines() const;

private:
  int leftColumns_;
  std::vector<QStringList> rows_;
};

}  // namespace korvax::client
