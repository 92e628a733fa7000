#include "framework/ByteWriter.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace korvax {

namespace {
constexpr std::size_t LongestInteger = 20;  // 18446744073709551615, -9223372036854775808
constexpr std::size_t LongestGeneral = 16;  // -1.23457e-308
constexpr std::size_t LongestFixed = 330;   // -DBL_MAX has 309 digits before the point
}  // namespace

void ByteWriter::Grow(std::size_t bytes) {
  const std::size_t grown = std::max({std::size_t{256}, capacity_ * 2, size_ + bytes});
  auto larger = std::make_unique_for_overwrite<char[]>(grown);
  if (size_ != 0) {
    std::memcpy(larger.get(), data_.get(), size_);
  }
  data_ = std::move(larger);
  capacity_ = grown;
}

ByteWriter& ByteWriter::Text(std::string_view text) {
  std::copy(text.begin(), text.end(), Room(text.size()));
  size_ += text.size();
  return *this;
}

ByteWriter& ByteWriter::DecimalSigned(qint64 value) {
  char* const begin = Room(LongestInteger);
  size_ += static_cast<std::size_t>(std::to_chars(begin, begin + LongestInteger, value).ptr - begin);
  return *this;
}

ByteWriter& ByteWriter::DecimalUnsigned(quint64 value) {
  char* const begin = Room(LongestInteger);
  size_ += static_cast<std::size_t>(std::to_chars(begin, begin + LongestInteger, value).ptr - begin);
  return *this;
}

ByteWriter& ByteWriter::General(double value) {
  char* const begin = Room(LongestGeneral);
  const auto end = std::to_chars(begin, begin + LongestGeneral, value, std::chars_format::general, 6).ptr;
  size_ += static_cast<std::size_t>(end - begin);
  return *this;
}

ByteWriter& ByteWriter::Fixed(double value) {
  char* const begin = Room(LongestFixed);
  const auto end = std::to_chars(begin, begin + LongestFixed, value, std::chars_format::fixed, 6).ptr;
  size_ += static_cast<std::size_t>(end - begin);
  return *this;
}

}  // namespace korvax
