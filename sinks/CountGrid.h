#pragma once

#include <QString>

#include <atomic>
#include <cstdlib>
#include <memory>

namespace korvax {
class ByteWriter;

/// Counters of rows × columns, unsigned 32-bit, wrapping. A histogram has a row per channel and a column per bin.
/// One thread at a time counts or resets; any thread reads.
class CountGrid {
public:
  /// The most counters that one grid may have: all of them as text still fit one answer.
  static constexpr qint64 MostCounters = qint64{1} << 26;

  /// Zeroed. Holds no counters when a direction is 0 or less, when there would be more than MostCounters, or
  /// when there is no memory for them.
  CountGrid(qint32 rows, qint32 columns);

  bool IsEmpty() const { return counters_ == nullptr; }
  qint32 Rows() const { return rows_; }
  qint32 Columns() const { return columns_; }

  /// Words for the operator when the grid has been refused its counters, or has more rows than it may have
  /// counters; empty otherwise. `size` says in parameter names what their number is the product of.
  QString Fault(const QString& size) const;

  /// Adds 1. Indices must be inside.
  void Count(qint32 row, qint32 column) {
    const std::atomic_ref<quint32> counter = Counter(Index(row, column));
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  }
  quint32 At(qint32 row, qint32 column) const {
    return Counter(Index(row, column)).load(std::memory_order_relaxed);
  }
  void Reset();

  /// Appends one row's counts as signed decimals separated by ",".
  void AppendRow(qint32 row, ByteWriter& out) const;

private:
  std::size_t Index(qint32 row, qint32 column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
  }

  std::atomic_ref<quint32> Counter(std::size_t index) const {
    return std::atomic_ref<quint32>(counters_.get()[index]);
  }

  struct Free {
    void operator()(quint32* counters) const { std::free(counters); }
  };

  qint32 rows_;
  qint32 columns_;
  std::unique_ptr<quint32, Free> counters_;  // touched as atomics only
};

}  // namespace korvax
