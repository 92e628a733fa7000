#pragma once

#include <memory>
#include <string>
#include <string_view>

struct XXH3_state_s;  // libxxhash's own

namespace korvax::runfiles {

/// The 128-bit XXH3 checksum of bytes that come piece by piece; where they are cut doesn't matter. It tells
/// damage, not forgery. A copy, also one made by moving, goes on by itself. Not thread-safe.
class Checksum {
public:
  Checksum();
  ~Checksum() = default;
  Checksum(const Checksum& other);
  Checksum& operator=(const Checksum& other);

  void Add(std::string_view bytes);

  /// Of all that was added so far: 32 digits, lower-case, the most significant first, as the program xxh128sum
  /// prints them. More may be added afterwards.
  std::string Hex() const;

private:
  struct FreeState {
    void operator()(XXH3_state_s* state) const;
  };

  std::unique_ptr<XXH3_state_s, FreeState> state_;
};

}  // namespace korvax::runfiles
