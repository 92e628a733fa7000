#include <QCoreApplication>

#include <gtest/gtest.h>

#if defined(__SANITIZE_THREAD__)
extern "C" const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() {
  // QThread's own: a mutex inside the uninstrumented Qt orders a thread's last wake before the thread object's end.
  return "race:QWaitCondition::~QWaitCondition\n";
}
#endif

int main(int argc, char* argv[]) {
  qputenv("QT_NO_GLIB", "1");  // as the server does
  QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
