#pragma once

#include <QString>

#include <ostream>

/// Lets GoogleTest show texts as texts rather than as lists of code units.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
