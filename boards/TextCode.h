#pragma once

#include <QString>

#include <algorithm>
#include <array>
#include <utility>

namespace korvax {

/// A configuration text and the code that it stands for.
template <typename Code>
using TextCode = std::pair<const char*, Code>;

/// The code of the first text that equals `text` exactly, else `otherwise`.
template <typename Code, std::size_t Size>
Code CodeOf(const QString& text, const std::array<TextCode<Code>, Size>& table, Code otherwise) {
  const auto found = std::find_if(table.begin(), table.end(),
                                  [&text](const auto& entry) { return text == QLatin1String(entry.first); });
  return found == table.end() ? otherwise : found->second;
}

}  // namespace korvax
