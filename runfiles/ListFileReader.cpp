#include "runfiles/ListFileReader.h"

#include "runfiles/LittleEndian.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <span>
#include <string_view>

namespace korvax::runfiles {
namespace {

constexpr std::string_view Magic = "KVXS";
constexpr std::uint64_t DigitsOfPresentDates = 10;

ListRecord Decode(std::span<const char, ListFileReader::RecordSize> bytes) {
  return {LittleEndian<std::uint64_t>(bytes),
          LittleEndian<std::uint32_t>(bytes.subspan(8)),
          LittleEndian<std::uint32_t>(bytes.subspan(12)),
          LittleEndian<std::uint32_t>(bytes.subspan(16)),
          LittleEndian<std::uint32_t>(bytes.subspan(20)),
          static_cast<std::uint8_t>(bytes[24])};
}

}  // namespace

std::uint64_t CreationTimeDigits(std::uint64_t digits, std::uint64_t size) {
  if (digits >= DigitsOfPresentDates) {
    return DigitsOfPresentDates;
  }
  for (std::uint64_t candidate = digits; candidate >= 1; --candidate) {
    if ((size - Magic.size() - candidate) % ListFileReader::RecordSize == 0) {
      return candidate;
    }
  }
  return digits;
}

ListFileReader::ListFileReader(const std::string& path) : state_(Open(path)) {}

ListFileState ListFileReader::Open(const std::string& path) {
  std::error_code error;
  size_ = std::filesystem::file_size(path, error);  // fails for a folder
  if (!error) {
    file_.open(path, std::ios::binary);
  }
  return error || !file_ ? ListFileState::CannotOpen : ReadHeader();
}

ListFileState ListFileReader::ReadHeader() {
  std::array<char, Magic.size() + DigitsOfPresentDates> bytes{};
  file_.read(bytes.data(), static_cast<std::streamsize>(std::min<std::uint64_t>(bytes.size(), size_)));
  const std::string_view header(bytes.data(), static_cast<std::size_t>(file_.gcount()));
  if (!header.starts_with(Magic)) {
    return ListFileState::BadMagic;
  }
  const std::size_t notDigit = header.find_first_not_of("0123456789", Magic.size());
  const std::size_t digits = std::min(notDigit, header.size()) - Magic.size();
  if (digits == 0) {
    return ListFileState::NoCreationTime;
  }
  headerSize_ = Magic.size() + CreationTimeDigits(digits, size_);
  std::from_chars(bytes.data() + Magic.size(), bytes.data() + headerSize_, creationTime_);
  wholeRecords_ = (size_ - headerSize_) / RecordSize;
  file_.clear();
  file_.seekg(static_cast<std::streamoff>(headerSize_));
  return ListFileState::Good;
}

bool ListFileReader::Next(ListRecord& record) {
  if (state_ != ListFileState::Good || recordsRead_ == wholeRecords_) {
    return false;
  }
  std::array<char, RecordSize> bytes;
  if (!file_.read(bytes.data(), bytes.size())) {
    state_ = ListFileState::ReadError;
    return false;
  }
  record = Decode(bytes);
  ++recordsRead_;
  return true;
}

std::optional<FileFault> ListFileReader::Fault() const {
  using enum FileFault::Kind;
  const std::uint64_t next = WholeBytes().value_or(0);
  switch (state_) {
    case ListFileState::Good:
      break;
    case ListFileState::CannotOpen:
      return FileFault{CannotOpen};
    case ListFileState::BadMagic:
      return FileFault{NoRunFile, 0, size_};
    case ListFileState::NoCreationTime:
      return size_ == Magic.size() ? FileFault{CutOff, 0, size_} : FileFault{NoRunFile, Magic.size(), size_};
    case ListFileState::ReadError:
      return FileFault{ReadError, next, size_, recordsRead_};
  }
  return next == size_ ? std::nullopt : std::optional(FileFault{CutOff, next, size_, recordsRead_});
}

std::optional<std::uint64_t> ListFileReader::WholeBytes() const {
  return headerSize_ == 0 ? std::nullopt : std::optional(headerSize_ + RecordSize * recordsRead_);
}

std::optional<std::uint64_t> ListFileReader::Created() const {
  return state_ == ListFileState::Good ? std::optional(creationTime_) : std::nullopt;
}

}  // namespace korvax::runfiles
