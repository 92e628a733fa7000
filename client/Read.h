#pragma once

#include <QString>

#include <optional>

namespace korvax::client {

/// A value read from words of others, such as an answer, or what is wrong with these.
template <typename T>
struct Read {
  std::optional<T> value;
  QString fault;
};

}  // namespace korvax::client
