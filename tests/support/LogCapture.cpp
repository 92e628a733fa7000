#include "tests/support/LogCapture.h"

#include <QtGlobal>

#include <mutex>
#include <vector>

namespace test {

namespace {

std::mutex mutex;
std::vector<QString> lines;  // no list that callers would share

// Info lines as they stand; the level of others shows.
QString Level(QtMsgType type) {
  switch (type) {
    case QtInfoMsg:
      return {};
    case QtDebugMsg:
      return QStringLiteral("[debug] ");
    case QtWarningMsg:
      return QStringLiteral("[warning] ");
    default:
      return QStringLiteral("[error] ");
  }
}

void Collect(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  const std::lock_guard lock(mutex);
  lines.push_back(Level(type) + text);
}

}  // namespace

LogCapture::LogCapture() {
  Clear();
  qInstallMessageHandler(Collect);
}

LogCapture::~LogCapture() {
  qInstallMessageHandler(nullptr);
}

QStringList LogCapture::Lines() const {
  const std::lock_guard lock(mutex);
  return QStringList(lines.begin(), lines.end());
}

int LogCapture::Count(const QString& line) const {
  return Lines().count(line);
}

void LogCapture::Clear() {
  const std::lock_guard lock(mutex);
  lines.clear();
}

}  // namespace test
