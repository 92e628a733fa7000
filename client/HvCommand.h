#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/QueryTarget.h"
#include "client/Requests.h"

namespace korvax::client {

/// Prints the values of the board of a high-voltage block, or sends it the command to switch on or off. The
/// block answers that with an empty message, as do blocks that aren't there; so it is asked for values too.
Ending RunHv(const ServerAddress& server, const HvRequest& request, Console& console);

}  // namespace korvax::client
