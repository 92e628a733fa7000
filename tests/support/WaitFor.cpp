#include "tests/support/WaitFor.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace test {

void DeliverEvents() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

bool WaitFor(const std::function<bool()>& condition) {
  constexpr qint64 LimitMs = 60'000;
  QElapsedTimer timer;
  timer.start();
  while (!condition()) {
    if (timer.elapsed() > LimitMs) {
      return false;
    }
    DeliverEvents();
    QThread::msleep(1);
  }
  return true;
}

}  // namespace test
