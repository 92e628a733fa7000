#pragma once

#include "runfiles/Checksum.h"

#include <QFile>
#include <QString>

namespace korvax {

/// One line of a statistics file.
struct StatLine {
  double runningTime = 0.0;  ///< s
  quint64 totalEvents = 0;
  double eventRate = 0.0;  ///< per second
  qint64 usedSpace = 0;    ///< bytes of the current data file
};

/// A file of statistics while it is written; open only while a line is appended. One thread.
class StatFile {
public:
  StatFile() = default;
  /// What is in the file stays.
  explicit StatFile(const QString& path) : path_(path) {}

  /// Appends the line, the header before it when asked for. False, and nothing is appended, when the file can't be
  /// opened or written.
  bool Append(bool withHeader, const StatLine& line);

  /// Empty for none.
  const QString& Path() const { return path_; }
  /// Bytes of the whole file, as the last line left it.
  qint64 Size() const { return size_; }
  /// Checksum of these.
  std::string ChecksumHex() const { return checksum_.Hex(); }

private:
  void ReadAnew(QFile& file);

  QString path_;
  qint64 size_ = 0;
  runfiles::Checksum checksum_;
};

}  // namespace korvax
