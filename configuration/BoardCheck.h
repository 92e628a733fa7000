#pragma once

#include "configuration/FindingList.h"
#include "configuration/Layout.h"

namespace korvax {

/// Adds what doesn't fit between the parts of the enabled boards: names that stand twice, commands that belong to
/// no endpoint.
void CheckBoards(const Layout& layout, FindingList& findings);

}  // namespace korvax
