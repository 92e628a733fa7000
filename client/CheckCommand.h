#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/Requests.h"

namespace korvax::client {

/// Checks a configuration file and prints each finding on a line of its own, or prints the schema. The ending is
/// BadFile when the file can't be read, or when a finding is an error.
Ending RunCheck(const CheckRequest& request, Console& console);

}  // namespace korvax::client
