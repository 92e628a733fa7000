#include "server/CommandLine.h"
#include "server/ProcessSettings.h"
#include "server/Startup.h"

#include <QCoreApplication>

int main(int argc, char* argv[]) {
  korvax::ApplyProcessSettings();
  QCoreApplication application(argc, argv);
  korvax::ReturnFreeMemoryEveryMinute(&application);
  const QString configurationPath = CommandLine::Process(application);
  Startup startup(configurationPath);
  const std::optional<int> failure = startup.Prepare();
  return failure ? *failure : startup.Run();
}
