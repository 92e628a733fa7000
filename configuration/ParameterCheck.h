#pragma once

#include "configuration/FindingList.h"
#include "configuration/Layout.h"
#include "configuration/SchemaNode.h"

namespace korvax {

/// Adds what is wrong with the parameters of each enabled block taken together: some that stand twice, that are
/// missing or without effect, sizes that are too large as a product, channels without a place on the map.
/// `schema`: of the whole file.
void CheckParameters(const Layout& layout, const SchemaNode& schema, FindingList& findings);

}  // namespace korvax
