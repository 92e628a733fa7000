#pragma once

#include <QtEndian>

#include <bit>
#include <concepts>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace korvax {

/// A growing buffer for run files and answer texts. Integers are written little-endian whatever the machine;
/// numbers as text follow the program's two forms. Clear keeps the memory, so that a writer that fills one
/// buffer a batch soon allocates nothing. Not thread-safe: one thread owns a writer.
class ByteWriter {
public:
  ByteWriter& U8(quint8 value) { return Integer(value); }
  ByteWriter& U32(quint32 value) { return Integer(value); }
  ByteWriter& U64(quint64 value) { return Integer(value); }
  ByteWriter& F64(double value) { return Integer(std::bit_cast<quint64>(value)); }

  ByteWriter& Text(std::string_view text);
  template <std::integral T>
  ByteWriter& Decimal(T value) {
    if constexpr (std::signed_integral<T>) {
      return DecimalSigned(value);
    } else {
      return DecimalUnsigned(value);
    }
  }
  /// General form with 6 significant digits: 1e+06, 0.5.
  ByteWriter& General(double value);
  /// Fixed notation with 6 decimals.
  ByteWriter& Fixed(double value);
  /// The values separated by ",": integers in decimal, doubles in general form.
  template <typename T>
  ByteWriter& Joined(const std::vector<T>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i != 0) {
        Text(",");
      }
      if constexpr (std::floating_point<T>) {
        General(values[i]);
      } else {
        Decimal(values[i]);
      }
    }
    return *this;
  }

  /// Lets `fill` write up to so many bytes itself: it gets where they begin and returns where they end.
  template <std::invocable<char*> Fill>
  ByteWriter& Filled(std::size_t mostBytes, Fill fill) {
    char* const begin = Room(mostBytes);
    size_ += static_cast<std::size_t>(fill(begin) - begin);
    return *this;
  }

  std::string_view View() const { return {data_.get(), size_}; }
  std::size_t Size() const { return size_; }
  void Clear() { size_ = 0; }

private:
  // Here, so that the fields of a binary record are written without calls.
  template <typename T>
  ByteWriter& Integer(T value) {
    qToLittleEndian(value, Room(sizeof value));
    size_ += sizeof value;
    return *this;
  }
  char* Room(std::size_t bytes) {
    if (capacity_ - size_ < bytes) {
      Grow(bytes);
    }
    return data_.get() + size_;
  }
  void Grow(std::size_t bytes);
  ByteWriter& DecimalSigned(qint64 value);
  ByteWriter& DecimalUnsigned(quint64 value);

  std::unique_ptr<char[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace korvax
