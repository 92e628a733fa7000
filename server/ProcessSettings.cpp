#include "server/ProcessSettings.h"

#include <QByteArray>
#include <QTimer>

#include <malloc.h>
#include <chrono>

namespace korvax {

void ApplyProcessSettings() {
  // The other event loop makes a system call for each message that passes from thread to thread.
  qputenv("QT_NO_GLIB", "1");
  // Answers of some megabytes are made all the time: else each has its memory from the system, page by page, and
  // gives it back.
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 128 << 20);
}

void ReturnFreeMemory() {
  malloc_trim(0);
}

// Queues that were full once leave hundreds of megabytes to the threads that filled them, which malloc keeps for
// good: over weeks that looks like a leak.
void ReturnFreeMemoryEveryMinute(QObject* parent) {
  auto* const timer = new QTimer(parent);
  QObject::connect(timer, &QTimer::timeout, &ReturnFreeMemory);
  timer->start(std::chrono::minutes(1));
}

}  // namespace korvax
