#pragma once

#include <QStringList>

namespace test {

/// Collects the program's log lines, from any thread, while it lives. One at a time. A line stands as the
/// logger formats it: items separated by one blank, texts in quotes.
class LogCapture {
public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  QStringList Lines() const;
  /// How many lines equal the text.
  int Count(const QString& line) const;
  void Clear();
};

}  // namespace test
