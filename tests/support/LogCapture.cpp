#include "tests/support/LogCapture.h"

#include <QtGlobal>

#include <mutex>

namespace test {

namespace {

std::mutex mutex;
QStringList lines;

void Collect(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text) {
  const std::lock_guard lock(mutex);
  lines << text;
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
  return lines;
}

int LogCapture::Count(const QString& line) const {
  return Lines().count(line);
}

void LogCapture::Clear() {
  const std::lock_guard lock(mutex);
  lines.clear();
}

}  // namespace test
