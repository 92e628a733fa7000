#include "server/ProcessSettings.h"

#include <QByteArray>

#include <malloc.h>

namespace korvax {

void ApplyProcessSettings() {
  // The other event loop makes a system call for each message that passes from thread to thread.
  qputenv("QT_NO_GLIB", "1");
  // Answers of some megabytes are made all the time: else each has its memory from the system, page by page, and
  // gives it back.
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 128 << 20);
}

}  // namespace korvax
