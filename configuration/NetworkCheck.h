#pragma once

#include "configuration/FindingList.h"

namespace korvax {

/// Adds an address to listen on that is none: the server refuses to start with it.
void CheckNetwork(const QJsonObject& configuration, FindingList& findings);

}  // namespace korvax
