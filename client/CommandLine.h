#pragma once

#include "client/Endings.h"
#include "client/QueryTarget.h"
#include "client/Requests.h"

#include <string>

namespace korvax::client {

struct Invocation {
  ServerAddress server;
  Request request;
};

/// Reads the words after the program's name, in UTF-8. Gives an ending instead where nothing is to be done:
/// Ok with the text that --help or --version asked for, Usage with what is wrong and where help is found.
std::variant<Invocation, Ending> ParseCommandLine(const std::vector<std::string>& words);

}  // namespace korvax::client
