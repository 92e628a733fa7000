#pragma once

#include "framework/ChainContext.h"

namespace korvax {

/// The URL path of the route that finds its block by the message's "path".
inline constexpr const char GenericRoute[] = "query_by_json";

/// Answers one client message. On the generic route the target is the first block whose FullPath equals the
/// message's "path", on any other the first whose Name equals the route. A block is called only when
/// it is reached that way. Empty when no block is found, it isn't called, or it has no answer.
/// Main thread.
QString AnswerQuery(const BlockList& blocks, const QString& route, const QString& message);

}  // namespace korvax
