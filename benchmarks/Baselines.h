#pragma once

#include "benchmarks/Result.h"

#include <QString>

namespace bench {

// What roads are compared with: the same work without the program around it.

/// Decodes the records through the entry array straight into a histogram, on one thread.
Result BareLoop(qint64 blocks);

constexpr int EventsPerFile = 5'000'000;
/// As many bytes as a dumper writes, in calls of the same size, until the medium has them.
Result PlainWrite(qint64 blocks);
/// Waits until the medium has what is in a folder.
void Sync(const QString& folder);

/// An "event" of this is a sample. Copies go to so many places in turn: what is kept for others can't go to the
/// same place, which is in the cache, each time.
Result CopySamples(std::size_t places, qint64 blocks);

}  // namespace bench
