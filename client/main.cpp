#include "client/Korvaxctl.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  const QCoreApplication application(argc, argv);
  korvax::client::Console console(stdout, stderr);
  return static_cast<int>(korvax::client::RunKorvaxctl(words, console));
}
