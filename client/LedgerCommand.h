#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/QueryTarget.h"
#include "client/Requests.h"

namespace korvax::client {

/// Asks for the account of all records and prints it. Where it is not at rest or doesn't balance, it is read again
/// a few times: what is wrong in one reading and right in the next was only under way.
Ending ShowLedger(const ServerAddress& server, const LedgerRequest& request, Console& console);

}  // namespace korvax::client
