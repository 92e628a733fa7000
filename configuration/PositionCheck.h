#pragma once

#include "configuration/FindingList.h"
#include "configuration/ParameterList.h"

namespace korvax {

/// Adds the channels of a "position" block that have no place on its map, or no partner. Other blocks have none.
void CheckPositions(const BlockEntry& block, const ParameterList& parameters, FindingList& findings);

}  // namespace korvax
