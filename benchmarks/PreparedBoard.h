#pragma once

#include "acquisition/BoardRecords.h"
#include "boards/VendorLibrary.h"

#include <span>

namespace bench {

/// A board library inside the process that hands out blocks made beforehand, as often and as fast as it is asked
/// for them, so that what is measured is the server alone. One at a time; set it up while no source runs.
namespace PreparedBoard {

/// For a DigitizerBoard.
vendor::FunctionLookup Lookup();

/// The blocks are handed out in turn, `reads` times in all, then nothing more. They must outlive that.
void Load(std::span<const std::span<const board::Entry>> blocks, qint64 reads);

/// Reads until a block is handed out at least this much later than the one before; 0 for at once.
void SetPace(qint64 nanosecondsBetweenBlocks);

/// Whether all has been handed out and handed back.
bool IsDone();

}  // namespace PreparedBoard

}  // namespace bench
