#include "client/DotPlot.h"

#include <array>

namespace korvax::client {

namespace {

/// The bits of a braille character beyond U+2800, column by column, from the bottom up.
constexpr std::array<std::array<unsigned char, DotPlot::dotsPerRow>, DotPlot::columnsPerCharacter> bits{
    {{0x40, 0x04, 0x02, 0x01}, {0x80, 0x20, 0x10, 0x08}}};

}  // namespace

DotPlot::DotPlot(std::size_t columns, int rows)
    : width_((columns + columnsPerCharacter - 1) / columnsPerCharacter),
      cells_(width_ * static_cast<std::size_t>(rows)) {}

void DotPlot::Fill(std::size_t column, int low, int high) {
  const auto& columnBits = bits[column % columnsPerCharacter];
  for (auto dot = static_cast<std::size_t>(low); dot <= static_cast<std::size_t>(high); ++dot) {
    unsigned char& cell = cells_[dot / dotsPerRow * width_ + column / columnsPerCharacter];
    cell = static_cast<unsigned char>(cell | columnBits[dot % dotsPerRow]);
  }
}

QString DotPlot::Row(int row) const {
  QString line;
  int used = 0;
  for (std::size_t index = 0; index < width_; ++index) {
    const unsigned char cell = cells_[static_cast<std::size_t>(row) * width_ + index];
    line += cell == 0 ? QChar(u' ') : QChar(static_cast<ushort>(0x2800 + cell));
    used = cell == 0 ? used : static_cast<int>(line.size());
  }
  return line.left(used);
}

}  // namespace korvax::client
