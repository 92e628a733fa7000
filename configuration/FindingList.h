#pragma once

#include "configuration/Finding.h"
#include "configuration/PositionIndex.h"

#include <QJsonObject>

namespace korvax {

/// Collects what a check finds in one file. Refers to the file's object and positions, which outlive it.
class FindingList {
public:
  /// So many findings are kept; of further ones only the number.
  static constexpr int MostKept = 1000;

  FindingList(const QJsonObject& configuration, const PositionIndex& positions)
      : configuration_(configuration), positions_(positions) {}

  /// The place that `path` leads to, and what was expected there. The place needn't exist.
  void Add(Severity severity, const QStringList& path, const QString& expected, const QString& found);
  void Warn(const QStringList& path, const QString& expected, const QString& found) {
    Add(Severity::Warning, path, expected, found);
  }
  void Fail(const QStringList& path, const QString& expected, const QString& found) {
    Add(Severity::Error, path, expected, found);
  }
  /// As Add, at a line that is known already.
  void AddAtLine(Severity severity, int line, const QStringList& path, const QString& text);

  /// In line order, as often as they were added, but never the same twice on one line.
  CheckReport Report() const;

private:
  const QJsonObject& configuration_;
  const PositionIndex& positions_;
  std::vector<Finding> findings_;
  int errors_ = 0;
  int warnings_ = 0;
};

}  // namespace korvax
