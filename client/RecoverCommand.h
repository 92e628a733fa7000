#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/Requests.h"

namespace korvax::client {

/// Copies what is whole of a run file into a new file and tells what was kept. The ending is Ok when that worked,
/// whether something was cut off or not.
Ending RecoverFile(const RecoverRequest& request, Console& console);

}  // namespace korvax::client
