#pragma once

#include "client/Console.h"
#include "client/Endings.h"
#include "client/Requests.h"

namespace korvax::client {

/// Compares the files of runs with their summaries and prints what it finds. The ending is Ok when all is as it
/// was written and the runs were ended, BadFile when it isn't, NotBalanced when only the account of the records is
/// wrong.
Ending VerifyRuns(const VerifyRequest& request, Console& console);

}  // namespace korvax::client
