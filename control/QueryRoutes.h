#pragma once

#include "framework/ChainContext.h"

namespace korvax {

/// The URL path of the route that finds its block by the message's "path".
inline constexpr const char GenericRoute[] = "query_by_json";

/// Answers one client message. On the generic route the target is the first block whose FullPath equals the
/// message's "path", on any other the first whose Name equals the route. Each route serves its own block types
/// only. Empty when no block is found, its type isn't served on this route, or the block has no answer.
/// Main thread.
QString AnswerQuery(const BlockList& blocks, const QString& route, const QString& message);

}  // namespace korvax
