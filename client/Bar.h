#pragma once

#include <QString>

namespace korvax::client {

/// A bar of at most `width` characters whose length is the share that `value` has in `largest`; the logarithmic
/// share is counted from 0.1. Whatever is above 0 has a bar.
QString Bar(double value, double largest, int width, bool logarithmic);

}  // namespace korvax::client
