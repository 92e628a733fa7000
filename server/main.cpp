#include "server/CommandLine.h"
#include "server/Startup.h"

#include <QCoreApplication>

#include <clocale>

int main(int argc, char* argv[]) {
  QCoreApplication application(argc, argv);
  // The application object takes the user's locale, where calibration expressions may want a decimal comma.
  std::setlocale(LC_NUMERIC, "C");
  const QString configurationPath = CommandLine::Process(application);
  Startup startup(configurationPath);
  const std::optional<int> failure = startup.Prepare();
  return failure ? *failure : startup.Run();
}
