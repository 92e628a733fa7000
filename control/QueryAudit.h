#pragma once

#include <QString>

namespace korvax {

/// Logs a query that takes recording out of its folder, one line each, whether it then succeeds or not: a run id
/// that leads out of the storage folder, or is that folder itself, and every storage path. Whoever writes
/// elsewhere on the machine can be found that way. `route` and `message` as of AnswerQuery, `client` an address.
void LogStorageQuery(const QString& route, const QString& message, const QString& client);

/// Whether storage folder + "/" + `runId` is the storage folder itself, or climbs out of it on its way.
bool LeavesStorage(const QString& runId);

}  // namespace korvax
