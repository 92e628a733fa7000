#pragma once

#include <cstdint>
#include <string>

namespace test {

/// The bytes of a binary list file, event by event.
struct ListBytes {
  std::string bytes = "KVXS1700000000";

  ListBytes& Add(std::uint64_t timestamp, std::uint32_t channel, std::uint32_t raw, std::uint8_t flags = 0) {
    return Append(timestamp, 8)
        .Append(channel, 4)
        .Append(raw, 4)
        .Append(raw, 4)
        .Append(0x01020304, 4)
        .Append(flags, 1);
  }

private:
  ListBytes& Append(std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i) {
      bytes.push_back(static_cast<char>(value >> (8 * i) & 0xff));
    }
    return *this;
  }
};

}  // namespace test
