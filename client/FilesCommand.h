#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/Requests.h"

namespace korvax::client {

/// Reads the run files of `request`, one after the other, and prints what it asks for. The ending is Ok when
/// every file is as it should be, BadFile when one isn't.
Ending RunFiles(const FilesRequest& request, Console& console);

}  // namespace korvax::client
