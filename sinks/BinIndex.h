#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvax {

/// Truncates toward zero. A value that doesn't fit 32 bits, or is not a number, becomes the most negative
/// value, so that clamping puts it into bin 0. Kept: spectra have always shown overflows there.
inline qint32 TruncateToBin(double value) {
  constexpr double Limit = 2147483648.0;
  if (!(value > -Limit - 1.0 && value < Limit)) {
    return std::numeric_limits<qint32>::min();
  }
  return static_cast<qint32>(value);
}

/// The nearest integer, halves away from zero; what doesn't fit as in TruncateToBin.
inline qint32 RoundToBin(double value) {
  return TruncateToBin(std::round(value));
}

/// The nearest of the indices 0 to count - 1; count must be positive.
inline qint32 ClampIndex(qint32 index, qint32 count) {
  return std::clamp(index, 0, count - 1);
}

}  // namespace korvax
