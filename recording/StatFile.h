#pragma once

#include <QString>

namespace korvax {

/// One line of a statistics file.
struct StatLine {
  double runningTime = 0.0;  ///< s
  quint64 totalEvents = 0;
  double eventRate = 0.0;  ///< per second
  qint64 usedSpace = 0;    ///< bytes of the current data file
};

/// Appends the line to the file, the header before it when asked for. False, and nothing is appended, when the
/// file can't be opened or written.
bool AppendStatLine(const QString& path, bool withHeader, const StatLine& line);

}  // namespace korvax
