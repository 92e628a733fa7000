#include "control/PinOrigins.h"

#include "framework/KorvaxBlock.h"

namespace korvax {

PinOrigins::PinOrigins(const BlockList& blocks) {
  for (const auto& block : blocks) {
    for (std::size_t pin = 0; pin < block->Outputs().size(); ++pin) {
      origins_[block->Outputs()[pin].get()] = {block->Name(), static_cast<int>(pin)};
    }
  }
}

PinOrigin PinOrigins::Of(const PinInput& input) const {
  const auto origin = origins_.find(input.Upstream());
  return origin == origins_.end() ? PinOrigin() : origin->second;
}

}  // namespace korvax
