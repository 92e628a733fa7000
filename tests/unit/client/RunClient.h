#pragma once

#include "client/Korvaxctl.h"

#include <QString>

#include <string>
#include <vector>

namespace test {

struct Outcome {
  korvax::client::ExitCode code;
  QString out;
  QString error;
};

/// Runs the client in this process, with standard output and standard error in files.
Outcome RunClient(const std::vector<std::string>& words);

/// As above, against a server of this machine at `port`.
Outcome RunClient(quint16 port, std::vector<std::string> words);

}  // namespace test
