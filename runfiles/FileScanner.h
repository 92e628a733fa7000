#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvax::runfiles {

/// Reads a file from its beginning to its end, number by number and text by text, through a buffer of fixed size.
/// The first thing that isn't as asked for stops it: from then on nothing is taken any more and all numbers are 0,
/// so that a reader may ask for a whole record and look at Good() once, provided that its loops look, too.
///
/// The size is taken at opening; what is appended later is not seen. Not thread-safe.
class FileScanner {
public:
  enum class Stop {
    CannotOpen,
    ReadError,   ///< the file got shorter, or the device failed
    EndOfFile,   ///< what there was fitted, but it ended too soon
    Unexpected,  ///< the byte at Offset() isn't one that may stand there
  };

  explicit FileScanner(const std::string& path);

  bool Good() const { return !stop_; }
  std::optional<Stop> Stopped() const { return stop_; }
  std::uint64_t Size() const { return size_; }
  std::uint64_t Offset() const { return offset_; }  ///< of the next byte
  std::uint64_t Remaining() const { return size_ - offset_; }

  /// The next bytes, untaken: `count` (at most 1024), or fewer where the file ends. Valid until the next call.
  std::string_view Peek(std::size_t count);

  /// Takes a byte if it is the next one.
  bool Accept(char byte);
  /// Takes these bytes, of any number.
  void Expect(std::string_view bytes);

  /// Takes a decimal number that isn't the last thing in the file. Instantiated for the integers of 32 and 64 bits
  /// and for double, which may be "inf" or "nan".
  template <typename Number>
  Number Decimal();

  /// Takes a number of little-endian bytes. Instantiated for std::uint32_t and std::uint64_t.
  template <typename Integer>
  Integer Binary();

  void StopAtEndOfFile() { StopFor(Stop::EndOfFile); }
  /// What was read from `offset` on, or stands there, may not stand there.
  void Refuse(std::uint64_t offset);

private:
  void Refill();
  void Take(std::size_t count);
  void StopFor(Stop reason);
  void StopWhereBytesEnd();

  std::ifstream file_;
  std::uint64_t size_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t unread_ = 0;  // bytes of the file that were not in the buffer yet
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // of the bytes in the buffer that are not taken yet
  std::size_t end_ = 0;
  bool readFailed_ = false;  // what came before it is still in the buffer
  std::optional<Stop> stop_;
};

}  // namespace korvax::runfiles
