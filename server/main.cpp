#include "server/CommandLine.h"
#include "server/Startup.h"

#include <QCoreApplication>

int main(int argc, char* argv[]) {
  // The other event loop makes a system call for each message that passes from thread to thread.
  qputenv("QT_NO_GLIB", "1");
  QCoreApplication application(argc, argv);
  const QString configurationPath = CommandLine::Process(application);
  Startup startup(configurationPath);
  const std::optional<int> failure = startup.Prepare();
  return failure ? *failure : startup.Run();
}
