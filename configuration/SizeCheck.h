#pragma once

#include "configuration/FindingList.h"
#include "configuration/ParameterList.h"

namespace korvax {

/// Adds sizes that are each right but together more than the block takes: the server refuses to start with them.
void CheckSize(const BlockEntry& block, const ParameterList& parameters, FindingList& findings);

}  // namespace korvax
