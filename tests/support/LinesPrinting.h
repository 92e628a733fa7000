#pragma once

#include "tests/support/Printing.h"

#include <QStringList>

/// Lets GoogleTest show lines one below the other.
inline void PrintTo(const QStringList& lines, std::ostream* out) {
  for (const QString& line : lines) {
    *out << "\n  " << line.toStdString();
  }
}
