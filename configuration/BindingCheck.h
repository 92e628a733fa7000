#pragma once

#include "configuration/FindingList.h"
#include "configuration/Layout.h"

namespace korvax {

/// Adds what is wrong with the boards and endpoints that "source" and "hv" blocks name.
void CheckBindings(const Layout& layout, FindingList& findings);

}  // namespace korvax
