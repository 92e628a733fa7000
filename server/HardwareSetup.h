#pragma once

#include "framework/ChainContext.h"

#include <QJsonArray>

#include <optional>

class BoardPlugins;

namespace HardwareSetup {

/// Connects and configures every enabled "Hardware" entry in order and appends its board to the list. Logs what
/// it does. Returns the exit status of the process when an entry can't be served: 0 for want of a library
/// (kept: unlike every other failure), 1 for a board that doesn't open.
std::optional<int> ConnectBoards(const QJsonArray& hardware, const BoardPlugins& plugins, BoardList& boards);

}  // namespace HardwareSetup
