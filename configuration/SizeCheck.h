#pragma once

#include "configuration/FindingList.h"
#include "configuration/ParameterList.h"

namespace korvax {

/// Adds sizes that are more than the block takes, though each by itself isn't against the schema, or is only
/// warned of: the server refuses to start with them.
void CheckSize(const BlockEntry& block, const ParameterList& parameters, FindingList& findings);

}  // namespace korvax
