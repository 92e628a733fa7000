#pragma once

#include <QString>

#include <optional>

namespace korvax::client {

/// Reads a text from its beginning, piece by piece. What a method does not find it leaves unread.
class TextScanner {
public:
  explicit TextScanner(QString text) : text_(std::move(text)) {}

  /// Reads `expected`, if it comes next.
  bool Skip(const QString& expected) {
    const bool isNext = text_.midRef(at_).startsWith(expected);
    at_ += isNext ? expected.size() : 0;
    return isNext;
  }

  /// Reads up to the next `mark` and the mark itself; gives what stands before it.
  std::optional<QString> Until(const QString& mark) {
    const int found = text_.indexOf(mark, at_);
    if (found < 0) {
      return std::nullopt;
    }
    const QString before = text_.mid(at_, found - at_);
    at_ = found + static_cast<int>(mark.size());
    return before;
  }

  bool AtEnd() const { return at_ == text_.size(); }

private:
  QString text_;
  int at_ = 0;
};

}  // namespace korvax::client
