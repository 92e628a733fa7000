#pragma once

#include "client/Console.h"
#include "client/Endings.h"

#include <string>
#include <vector>

namespace korvax::client {

/// Does what the words after the program's name ask for, and says on the console what came of it. Runs event
/// loops of its own, so needs an application object, and returns when all is done.
ExitCode RunKorvaxctl(const std::vector<std::string>& words, Console& console);

}  // namespace korvax::client
