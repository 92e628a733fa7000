#include "client/Bar.h"

#include <algorithm>
#include <cmath>

namespace korvax::client {

namespace {

constexpr int eighthsPerCharacter = 8;
constexpr double logarithmicBottom = 0.1;

}  // namespace

QString Bar(double value, double largest, int width, bool logarithmic) {
  if (!(value > 0)) {
    return {};
  }
  const double top = std::max(largest, 2 * logarithmicBottom);
  const double share =
      logarithmic ? std::log(value / logarithmicBottom) / std::log(top / logarithmicBottom) : value / largest;
  const int full = width * eighthsPerCharacter;
  const int eighths = std::clamp(static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * full)), 1, full);
  static const QString parts = QStringLiteral(" ▏▎▍▌▋▊▉");
  const QString bar(eighths / eighthsPerCharacter, QChar(u'█'));
  const int part = eighths % eighthsPerCharacter;
  return part == 0 ? bar : bar + parts.at(part);
}

}  // namespace korvax::client
