#pragma once

#include "framework/ChainContext.h"

#include <QString>

#include <map>

class PinInput;
class PinOutput;

namespace korvax {

/// Where an input takes its records from.
struct PinOrigin {
  QString from;  ///< name of the producing block; empty for a pin that isn't linked to one
  int pin = 0;   ///< which of its outputs
};

/// The output pins of all blocks, found by the inputs that are linked to them. Main thread.
class PinOrigins {
public:
  explicit PinOrigins(const BlockList& blocks);

  PinOrigin Of(const PinInput& input) const;

private:
  std::map<const PinOutput*, PinOrigin> origins_;
};

}  // namespace korvax
