#include "runfiles/FileScanner.h"

#include "runfiles/LittleEndian.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace korvax::runfiles {
namespace {

constexpr std::size_t BufferSize = 1 << 16;
constexpr std::size_t LongestNumber = 32;
constexpr std::string_view NumberBytes = "0123456789+-.einfa";

}  // namespace

FileScanner::FileScanner(const std::string& path) : buffer_(BufferSize) {
  std::error_code error;
  size_ = std::filesystem::file_size(path, error);  // fails for whatever is no regular file
  if (!error) {
    file_.open(path, std::ios::binary);
  }
  if (error || !file_) {
    size_ = 0;
    StopFor(Stop::CannotOpen);
  }
  unread_ = size_;
}

std::string_view FileScanner::Peek(std::size_t count) {
  if (end_ - begin_ < count && unread_ > 0) {
    Refill();
  }
  return {buffer_.data() + begin_, std::min(count, end_ - begin_)};
}

void FileScanner::Refill() {
  std::copy(buffer_.data() + begin_, buffer_.data() + end_, buffer_.data());
  end_ -= begin_;
  begin_ = 0;
  const std::size_t wanted = std::min<std::uint64_t>(buffer_.size() - end_, unread_);
  file_.read(buffer_.data() + end_, static_cast<std::streamsize>(wanted));
  const auto got = static_cast<std::size_t>(file_.gcount());
  end_ += got;
  unread_ -= got;
  if (got < wanted) {
    unread_ = 0;
    readFailed_ = true;
  }
}

void FileScanner::Take(std::size_t count) {
  begin_ += count;
  offset_ += count;
}

void FileScanner::StopFor(Stop reason) {
  if (Good()) {
    stop_ = reason;
  }
}

void FileScanner::StopWhereBytesEnd() {
  StopFor(readFailed_ ? Stop::ReadError : Stop::EndOfFile);
}

void FileScanner::Refuse(std::uint64_t offset) {
  if (Good()) {
    offset_ = offset;
    StopFor(Stop::Unexpected);
  }
}

bool FileScanner::Accept(char byte) {
  const std::string_view next = Peek(1);
  if (!Good() || next.empty() || next.front() != byte) {
    return false;
  }
  Take(1);
  return true;
}

void FileScanner::Expect(std::string_view bytes) {
  for (const char byte : bytes) {
    if (!Accept(byte)) {
      Peek(1).empty() ? StopWhereBytesEnd() : StopFor(Stop::Unexpected);
      return;
    }
  }
}

template <typename Number>
Number FileScanner::Decimal() {
  const std::string_view next = Peek(LongestNumber);
  const std::string_view word = next.substr(0, std::min(next.find_first_not_of(NumberBytes), next.size()));
  Number value{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  const bool whole = error == std::errc{} && end == word.data() + word.size() && word.size() < LongestNumber;
  if (word.size() == next.size() && next.size() < LongestNumber) {
    StopWhereBytesEnd();
  } else if (!whole) {
    StopFor(Stop::Unexpected);
  }
  if (!Good()) {
    return {};
  }
  Take(word.size());
  return value;
}

template std::int32_t FileScanner::Decimal();
template std::uint32_t FileScanner::Decimal();
template std::int64_t FileScanner::Decimal();
template std::uint64_t FileScanner::Decimal();
template double FileScanner::Decimal();

template <typename Integer>
Integer FileScanner::Binary() {
  const std::string_view bytes = Peek(sizeof(Integer));
  if (bytes.size() < sizeof(Integer)) {
    StopWhereBytesEnd();
  }
  if (!Good()) {
    return 0;
  }
  const auto value = LittleEndian<Integer>(bytes);
  Take(sizeof(Integer));
  return value;
}

template std::uint32_t FileScanner::Binary();
template std::uint64_t FileScanner::Binary();

}  // namespace korvax::runfiles
