#pragma once

#include "runfiles/ListFileReader.h"

#include <memory>

namespace korvax::runfiles {

/// Reads a list file: the events of a run. The text forms hold timestamp, channel and energyRaw of a record only;
/// all else of it is 0 then.
std::unique_ptr<RecordReader<ListRecord>> OpenList(const std::string& path, Form form);

}  // namespace korvax::runfiles
