#pragma once

#include <QtGlobal>

#include <cstddef>
#include <cstring>
#include <deque>
#include <vector>

namespace test {

/// Memory laid out field by field, as a board library lays out its records: little-endian, 16-byte aligned.
class Bytes {
public:
  Bytes& U8(quint8 value) { return Append(value); }
  Bytes& U32(quint32 value) { return Append(value); }
  Bytes& I32(qint32 value) { return Append(value); }
  Bytes& U64(quint64 value) { return Append(value); }
  Bytes& F64(double value) { return Append(value); }
  Bytes& Pointer(const void* value) { return Append(value); }
  /// Bytes that nobody should look at.
  Bytes& Unused(std::size_t count) {
    data_.insert(data_.end(), count, std::byte{0xEE});
    return *this;
  }

  const std::byte* Data() const { return data_.data(); }
  std::size_t Size() const { return data_.size(); }

private:
  template <typename T>
  [[gnu::noinline]] Bytes& Append(T value) {  // inlined, GCC warns of an overflow that there isn't
    data_.resize(data_.size() + sizeof value);
    std::memcpy(data_.data() + data_.size() - sizeof value, &value, sizeof value);
    return *this;
  }

  std::vector<std::byte> data_;
};

/// A block as ReadData hands it out: an array of 32-byte entries that point to records. Owns its records.
class RawBlock {
public:
  /// Adds an entry that points to the record; `word8` stands at offset 8 of the entry.
  RawBlock& Add(Bytes record, quint64 word8 = 0) {
    records_.push_back(std::move(record));
    return AddPointer(records_.back().Data(), word8);
  }
  RawBlock& AddPointer(const void* record, quint64 word8 = 0) {
    entries_.Unused(8).U64(word8).Unused(8).Pointer(record);
    ++count_;
    return *this;
  }

  const std::byte* Entries() const { return entries_.Data(); }
  qint32 Count() const { return count_; }

  /// Fills the caller's 16-byte holder: pointer at offset 0, count at offset 12.
  void FillHolder(void* holder) const { FillHolder(holder, count_); }
  void FillHolder(void* holder, qint32 count) const {
    const std::byte* const entries = Entries();
    std::memcpy(holder, &entries, sizeof entries);
    std::memcpy(static_cast<std::byte*>(holder) + 12, &count, sizeof count);
  }

private:
  std::deque<Bytes> records_;
  Bytes entries_;
  qint32 count_ = 0;
};

}  // namespace test
