#include "client/HeatInk.h"

#include <array>

namespace korvax::client {

namespace {

/// From black by blue, red and yellow to white: numbers of the terminal's 256 colours, each lighter than the one
/// before, so that the order can be seen without seeing colours.
constexpr std::array<int, 15> colours{16, 19, 55, 91, 126, 161, 196, 202, 208, 214, 220, 226, 228, 230, 231};
constexpr std::array<char, 10> shades{' ', '.', ':', '-', '=', '+', '*', '#', '%', '@'};

const QString plain = QStringLiteral("\x1b[0m");

QString Ink(int level) {
  return QStringLiteral("\x1b[38;5;%1m").arg(colours[static_cast<std::size_t>(level)]);
}

QString Paper(int level) {
  return QStringLiteral("\x1b[48;5;%1m").arg(colours[static_cast<std::size_t>(level)]);
}

/// Colours are switched only where they change, which keeps a picture of a large terminal small.
QString ColouredLine(std::span<const int> upper, std::span<const int> lower) {
  QString line;
  for (std::size_t column = 0; column < upper.size(); ++column) {
    if (column == 0 || upper[column] != upper[column - 1]) {
      line += Ink(upper[column]);
    }
    if (!lower.empty() && (column == 0 || lower[column] != lower[column - 1])) {
      line += Paper(lower[column]);
    }
    line += QChar(u'▀');
  }
  return line + plain;
}

QChar Shade(int level) {
  return QLatin1Char(shades[static_cast<std::size_t>(level)]);
}

QString ShadedLine(std::span<const int> levels) {
  QString line;
  int used = 0;
  for (const int level : levels) {
    line += Shade(level);
    used = level > 0 ? static_cast<int>(line.size()) : used;
  }
  return line.left(used);
}

}  // namespace

int HeatInk::Levels() const {
  return static_cast<int>(coloured_ ? colours.size() : shades.size()) - 1;
}

QString HeatInk::Line(std::span<const int> upper, std::span<const int> lower) const {
  return coloured_ ? ColouredLine(upper, lower) : ShadedLine(upper);
}

QString HeatInk::Swatch(int level) const {
  return coloured_ ? Paper(level) + QString(swatchWidth, QLatin1Char(' ')) + plain
                   : QString(swatchWidth, Shade(level));
}

}  // namespace korvax::client
