#include "client/ColumnAxis.h"

#include "client/TextFit.h"

#include <algorithm>

namespace korvax::client {

namespace {

/// A round distance between labelled bins that leaves blanks between the labels.
std::size_t LabelStep(const ColumnAxis& axis) {
  const auto digits = static_cast<std::size_t>(QString::number(axis.first + axis.layout.bins - 1).size());
  return axis.layout.RoundStep((digits + 3) * axis.columnsPerCharacter);
}

}  // namespace

AxisText Draw(const ColumnAxis& axis, int width) {
  const std::size_t characters = (axis.layout.columns + axis.columnsPerCharacter - 1) / axis.columnsPerCharacter;
  QString line(static_cast<int>(characters), QChar(u'─'));
  QString labels = axis.name.rightJustified(axis.gutter - 2);
  const std::size_t step = LabelStep(axis);
  const std::size_t end = axis.first + axis.layout.bins;
  for (std::size_t bin = (axis.first + step - 1) / step * step; bin < end; bin += step) {
    const int column = static_cast<int>(axis.layout.ColumnOf(bin - axis.first) / axis.columnsPerCharacter);
    const QString label = QString::number(bin);
    const int length = static_cast<int>(label.size());
    const int begin = std::min(axis.gutter + column - (length - 1) / 2, width - length);
    if (begin > labels.size()) {
      line[column] = QChar(u'┬');
      labels += Blanks(begin - static_cast<int>(labels.size())) + label;
    }
  }
  return {line, labels};
}

}  // namespace korvax::client
