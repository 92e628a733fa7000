#pragma once

#include "configuration/Finding.h"
#include "configuration/PositionIndex.h"

#include <QJsonObject>

#include <functional>

namespace korvax {

/// Collects what a check finds in one file. Refers to the file's object and positions, which outlive it.
class FindingList {
public:
  /// So many findings are kept; of further ones only the number.
  static constexpr int MostKept = 1000;

  FindingList(const QJsonObject& configuration, const PositionIndex& positions)
      : configuration_(configuration), positions_(positions) {}

  /// Words that take long to find; asked for at once, and only when the finding is kept.
  using Words = std::function<QString()>;

  /// The place that `path` leads to, and what was expected there. The place needn't exist.
  void Add(Severity severity, const QStringList& path, const QString& expected, const Words& found);
  void Add(Severity severity, const QStringList& path, const QString& expected, const QString& found) {
    Add(severity, path, expected, [&found] { return found; });
  }
  template <typename Found>
  void Warn(const QStringList& path, const QString& expected, const Found& found) {
    Add(Severity::Warning, path, expected, found);
  }
  template <typename Found>
  void Fail(const QStringList& path, const QString& expected, const Found& found) {
    Add(Severity::Error, path, expected, found);
  }
  /// As Add, at a line that is known already.
  void AddAtLine(Severity severity, int line, const QStringList& path, const QString& text);

  /// In line order, as often as they were added, but never the same twice on one line.
  CheckReport Report() const;

private:
  /// Whether the finding is to be kept.
  bool Count(Severity severity);
  void Keep(Severity severity, int line, const QStringList& path, const QString& text);

  const QJsonObject& configuration_;
  const PositionIndex& positions_;
  std::vector<Finding> findings_;
  int errors_ = 0;
  int warnings_ = 0;
};

}  // namespace korvax
