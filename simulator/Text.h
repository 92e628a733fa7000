#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// Small readers of text. All are strict: the whole text has to fit.
namespace korvax::sim {

inline char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, LowerCase, LowerCase);
}

inline std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  for (;;) {
    const std::size_t end = text.find(separator, begin);
    parts.push_back(text.substr(begin, end - begin));
    if (end == std::string_view::npos) {
      return parts;
    }
    begin = end + 1;
  }
}

// A finite number within [low, high].
inline std::optional<double> ReadReal(std::string_view text, double low, double high) {
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= low && value <= high)) {
    return std::nullopt;
  }
  return value;
}

// A whole number within [low, high]; decimal digits with an optional minus sign.
template <typename Integer>
std::optional<Integer> ReadInteger(std::string_view text, Integer low, Integer high) {
  Integer value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) {
    return std::nullopt;
  }
  return value;
}

// "1", "0", "true" or "false".
inline std::optional<bool> ReadBoolean(std::string_view text) {
  if (text == "1" || EqualsIgnoringCase(text, "true")) {
    return true;
  }
  if (text == "0" || EqualsIgnoringCase(text, "false")) {
    return false;
  }
  return std::nullopt;
}

}  // namespace korvax::sim
