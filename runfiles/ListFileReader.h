#pragma once

#include "runfiles/RecordReader.h"

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

namespace korvax::runfiles {

/// One event of a list file.
struct ListRecord {
  std::uint64_t timestamp = 0;
  std::uint32_t channel = 0;
  std::uint32_t energyRaw = 0;
  std::uint32_t energyRawAgain = 0;  ///< the file holds it twice
  std::uint32_t energyLowWord = 0;   ///< low half of the calibrated energy's 64-bit double
  std::uint8_t flags = 0;            ///< bit 0 first event flag, bit 1 second event flag
};

enum class ListFileState {
  Good,
  CannotOpen,
  BadMagic,        ///< shorter than 4 bytes, or they aren't "KVXS"
  NoCreationTime,  ///< no digit follows the magic
  ReadError,       ///< the file got shorter, or the device failed, while it was read
};

/// Reads a binary list file: "KVXS", the creation time in decimal ASCII digits, then records of 25 bytes,
/// little-endian, without count or trailer.
///
/// Nothing marks the end of the digits, and the first record's timestamp can begin with bytes that look like
/// digits. Let n be the number of digit bytes behind the magic. Where n is 10 or more the time has 10: so it
/// is from September 2001 to November 2286. Where n is less (a clock that was not set) it has as many,
/// 1 to n, as leave whole records, which is at most one number; and where none does, n. A file that was cut
/// off is thus read rightly too, except one of an unset clock whose first record looks like a digit.
///
/// The file's size is taken at opening; what is appended later is not seen. Not thread-safe.
class ListFileReader final : public RecordReader<ListRecord> {
public:
  static constexpr std::size_t RecordSize = 25;

  explicit ListFileReader(const std::string& path);

  ListFileState State() const { return state_; }
  /// 0 unless the state was Good after opening.
  std::uint64_t WholeRecords() const { return wholeRecords_; }

  /// The next whole record; false at the end, or when the state isn't Good (any more).
  bool Next(ListRecord& record) override;
  std::optional<FileFault> Fault() const override;
  std::optional<std::uint64_t> WholeBytes() const override;
  std::optional<std::uint64_t> Created() const override;

private:
  ListFileState Open(const std::string& path);
  ListFileState ReadHeader();

  std::ifstream file_;
  std::uint64_t size_ = 0;
  std::uint64_t creationTime_ = 0;
  std::uint64_t headerSize_ = 0;  // offset of the first record; 0 without a whole header
  std::uint64_t wholeRecords_ = 0;
  std::uint64_t recordsRead_ = 0;
  ListFileState state_;  // last: Open() fills the others
};

/// The rule above: how many of the `digits` digit bytes, at least 1, of a file of `size` bytes are the time.
std::uint64_t CreationTimeDigits(std::uint64_t digits, std::uint64_t size);

}  // namespace korvax::runfiles
