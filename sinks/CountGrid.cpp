#include "sinks/CountGrid.h"

#include "framework/ByteWriter.h"

namespace korvax {

static_assert(std::atomic_ref<quint32>::is_always_lock_free &&
              std::atomic_ref<quint32>::required_alignment == alignof(quint32));

namespace {

// From calloc, so that rows that never count cost no memory.
quint32* ZeroedCounters(qint32 rows, qint32 columns) {
  if (rows <= 0 || columns <= 0 || qint64{rows} * columns > CountGrid::MostCounters) {
    return nullptr;
  }
  void* const memory =
      std::calloc(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns), sizeof(quint32));
  return static_cast<quint32*>(memory);
}

}  // namespace

CountGrid::CountGrid(qint32 rows, qint32 columns)
    : rows_(rows), columns_(columns), counters_(ZeroedCounters(rows, columns)) {}

QString CountGrid::Fault(const QString& size) const {
  const bool wanted = (rows_ > 0 && columns_ > 0) || rows_ > MostCounters;
  if (!wanted || !IsEmpty()) {
    return {};
  }
  return size + QStringLiteral(": expected at most %1, and memory for them; found %2 x %3")
                    .arg(MostCounters)
                    .arg(rows_)
                    .arg(columns_);
}

void CountGrid::Reset() {
  if (IsEmpty()) {
    return;
  }
  const std::size_t size = Index(rows_, 0);
  for (std::size_t i = 0; i < size; ++i) {
    if (Counter(i).load(std::memory_order_relaxed) != 0) {  // memory that never counted stays untouched
      Counter(i).store(0, std::memory_order_relaxed);
    }
  }
}

void CountGrid::AppendRow(qint32 row, ByteWriter& out) const {
  for (qint32 column = 0; !IsEmpty() && column < columns_; ++column) {
    if (column != 0) {
      out.Text(",");
    }
    out.Decimal(static_cast<qint32>(At(row, column)));
  }
}

}  // namespace korvax
