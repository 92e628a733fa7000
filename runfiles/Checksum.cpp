#include "runfiles/Checksum.h"

#include <xxhash.h>

#include <new>

namespace korvax::runfiles {

void Checksum::FreeState::operator()(XXH3_state_s* state) const {
  XXH3_freeState(state);
}

Checksum::Checksum() : state_(XXH3_createState()) {
  if (!state_) {
    throw std::bad_alloc();
  }
  XXH3_128bits_reset(state_.get());
}

Checksum::Checksum(const Checksum& other) : Checksum() {
  *this = other;
}

Checksum& Checksum::operator=(const Checksum& other) {
  if (this != &other) {
    XXH3_copyState(state_.get(), other.state_.get());
  }
  return *this;
}

void Checksum::Add(std::string_view bytes) {
  XXH3_128bits_update(state_.get(), bytes.data(), bytes.size());
}

std::string Checksum::Hex() const {
  constexpr std::string_view digits = "0123456789abcdef";
  XXH128_canonical_t canonical;
  XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(state_.get()));
  std::string hex;
  for (const unsigned char byte : canonical.digest) {
    hex += digits[byte >> 4U];
    hex += digits[byte & 0xfU];
  }
  return hex;
}

}  // namespace korvax::runfiles
