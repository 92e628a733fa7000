#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/QueryTarget.h"
#include "client/Requests.h"

namespace korvax::client {

/// Asks for the blocks that the server's configuration made and prints them, a row a block.
Ending ShowBlocks(const ServerAddress& server, const BlocksRequest& request, Console& console);

}  // namespace korvax::client
