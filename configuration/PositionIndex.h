#pragma once

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QStringList>

#include <vector>

namespace korvax {

/// Where in a JSON text its values stand. A path leads from the whole to a value: a member by its key, an element
/// by its number from 0 as a text.
class PositionIndex {
public:
  struct Duplicate {
    QStringList path;
    int line;
  };

  /// Takes any text, JSON or not, nested however deep: what can't be understood is passed over.
  explicit PositionIndex(const QByteArray& text);

  /// The line, from 1, of the key that a path ends with, or of the element. Where it isn't there: of the innermost
  /// value around it that is. Of two members of one key it is the later one, which is the one that counts.
  int Line(const QStringList& path) const;

  /// Later members of a key that an earlier member of the same object has, too.
  const std::vector<Duplicate>& Duplicates() const { return duplicates_; }

private:
  friend class PositionScanner;

  QHash<QPair<int, QString>, int> children_;  // by the value around it and the last step: index in lines_
  std::vector<int> lines_{1};                 // [0]: the whole
  std::vector<Duplicate> duplicates_;
};

}  // namespace korvax
