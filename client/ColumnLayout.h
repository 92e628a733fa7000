#pragma once

#include <QtGlobal>

#include <cstddef>
#include <span>
#include <vector>

namespace korvax::client {

/// How bins share the columns of a picture. Every column covers the same whole number of bins (the last may
/// cover fewer) or every bin the same whole number of columns: unequal shares would draw steps and combs
/// that are not in the data. So a picture may be narrower than the room that it is given.
struct ColumnLayout {
  std::size_t bins = 0;
  std::size_t binsPerColumn = 1;
  std::size_t columnsPerBin = 1;
  std::size_t columns = 0;

  /// Lays `bins` out in at most `room` columns; no columns at all when either is 0.
  static ColumnLayout Fit(std::size_t bins, std::size_t room);

  /// The column in the middle of a bin.
  std::size_t ColumnOf(std::size_t bin) const;

  /// The first bin of a column.
  std::size_t BinOf(std::size_t column) const { return column / columnsPerBin * binsPerColumn; }

  /// A round number of bins that take at least `room` columns.
  std::size_t RoundStep(std::size_t room) const;

  /// The counts of each column: the sum of its bins, or the count of its bin. `counts` holds `bins` of them.
  std::vector<quint64> Sums(std::span<const quint32> counts) const;
};

/// The largest of some sums; 0 where there are none.
quint64 Largest(std::span<const quint64> sums);

}  // namespace korvax::client
