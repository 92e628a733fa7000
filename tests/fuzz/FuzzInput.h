#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

namespace fuzz {

/// Takes an input apart from its front. What the input has no bytes for reads as 0.
class Input {
public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  bool IsEmpty() const { return rest_.empty(); }

  template <typename Number>
  Number Take() {
    Number value{};
    const std::span<const std::uint8_t> bytes = Take(sizeof value);
    if (!bytes.empty()) {
      std::memcpy(&value, bytes.data(), bytes.size());
    }
    return value;
  }

  /// At most so many bytes.
  QByteArray Text(std::size_t count) {
    const std::span<const std::uint8_t> bytes = Take(count);
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size())};
  }
  /// Up to the next `end` byte, which is taken, too; or all.
  QByteArray TextUpTo(std::uint8_t end) {
    const auto found = std::find(rest_.begin(), rest_.end(), end);
    const QByteArray text = Text(static_cast<std::size_t>(found - rest_.begin()));
    Take(1);
    return text;
  }
  QByteArray Rest() { return Text(rest_.size()); }

private:
  std::span<const std::uint8_t> Take(std::size_t count) {
    const auto taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

  std::span<const std::uint8_t> rest_;
};

}  // namespace fuzz
