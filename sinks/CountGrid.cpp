#include "sinks/CountGrid.h"

#include "framework/ByteWriter.h"

#include <array>
#include <charconv>
#include <cstring>

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

// "-2147483648,"; a small count is copied with what follows it, no more than this.
constexpr std::size_t LongestCount = 12;

// A small count and the comma behind it, to be copied whole: most counts are small, and clients ask for millions.
struct CountText {
  std::array<char, 7> text{};
  quint8 size = 0;
};

static_assert(sizeof(CountText) == 8);

constexpr std::size_t SmallCounts = 10'000;

const std::array<CountText, SmallCounts>& SmallCountTexts() {
  static const auto texts = [] {
    auto made = std::make_unique<std::array<CountText, SmallCounts>>();
    for (std::size_t count = 0; count < SmallCounts; ++count) {
      CountText& entry = (*made)[count];
      char* const end = std::to_chars(entry.text.begin(), entry.text.end(), count).ptr;
      *end = ',';
      entry.size = static_cast<quint8>(end + 1 - entry.text.begin());
    }
    return made;
  }();
  return *texts;
}

// The count and a comma; the end of them. There is room for the longest.
char* AppendCount(qint32 count, const std::array<CountText, SmallCounts>& small, char* text) {
  if (count >= 0 && static_cast<std::size_t>(count) < SmallCounts) {
    const CountText& entry = small[static_cast<std::size_t>(count)];
    std::memcpy(text, &entry, sizeof entry);  // one move; what is too much is written over
    return text + entry.size;
  }
  char* const end = std::to_chars(text, text + LongestCount, count).ptr;
  *end = ',';
  return end + 1;
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
  if (IsEmpty()) {
    return;
  }
  const auto& small = SmallCountTexts();
  out.Filled(LongestCount * static_cast<std::size_t>(columns_), [&](char* text) {
    for (qint32 column = 0; column < columns_; ++column) {
      text = AppendCount(static_cast<qint32>(At(row, column)), small, text);
    }
    return text - 1;  // without the last comma
  });
}

}  // namespace korvax
