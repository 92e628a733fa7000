#include "client/ColumnLayout.h"

#include "client/CountScale.h"

#include <algorithm>
#include <numeric>

namespace korvax::client {

ColumnLayout ColumnLayout::Fit(std::size_t bins, std::size_t room) {
  ColumnLayout layout;
  layout.bins = bins;
  if (bins == 0 || room == 0) {
    return layout;
  }
  if (bins <= room) {
    layout.columnsPerBin = room / bins;
    layout.columns = bins * layout.columnsPerBin;
  } else {
    layout.binsPerColumn = (bins + room - 1) / room;
    layout.columns = (bins + layout.binsPerColumn - 1) / layout.binsPerColumn;
  }
  return layout;
}

std::size_t ColumnLayout::ColumnOf(std::size_t bin) const {
  return bin * columnsPerBin / binsPerColumn + (columnsPerBin - 1) / 2;
}

std::size_t ColumnLayout::RoundStep(std::size_t room) const {
  return RoundUp((room * binsPerColumn + columnsPerBin - 1) / columnsPerBin);
}

std::vector<quint64> ColumnLayout::Sums(std::span<const quint32> counts) const {
  std::vector<quint64> sums;
  sums.reserve(columns);
  for (std::size_t first = 0; first < bins; first += binsPerColumn) {
    const auto share = counts.subspan(first, std::min(binsPerColumn, bins - first));
    sums.insert(sums.end(), columnsPerBin, std::accumulate(share.begin(), share.end(), quint64{0}));
  }
  return sums;
}

quint64 Largest(std::span<const quint64> sums) {
  return sums.empty() ? 0 : *std::ranges::max_element(sums);
}

}  // namespace korvax::client
