#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/QueryTarget.h"
#include "client/Requests.h"

namespace korvax::client {

/// Starts, stops, pauses or restarts the run of the server, or prints what its dumpers tell of it. Refuses
/// what would spoil the files of a run, unless the request forces it.
Ending ControlRun(const ServerAddress& server, const RunRequest& request, Console& console);

}  // namespace korvax::client
