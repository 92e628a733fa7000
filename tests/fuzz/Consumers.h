#pragma once

#include "framework/DataMessage.h"
#include "tests/fuzz/FuzzInput.h"

#include <vector>

namespace fuzz {

/// Hands the messages to the worker of a block that one byte of the input selects: a sink, a sorter, a recorder in
/// any format. The worker does all its work in this call, on this thread.
void Consume(std::vector<DataMessage> messages, Input& input);

}  // namespace fuzz
