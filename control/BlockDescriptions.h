#pragma once

#include "framework/ChainContext.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace korvax {

/// What the configuration made, in list order: {"blocks":[...]}; see docs/queries.md. With a name, the blocks of
/// that name alone. Run control isn't in it. Main thread.
QJsonObject DescribeBlocks(const BlockList& blocks, const std::optional<QString>& name = {});

}  // namespace korvax
