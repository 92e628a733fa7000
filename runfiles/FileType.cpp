#include "runfiles/FileType.h"

#include "runfiles/FileScanner.h"

#include <algorithm>

namespace korvax::runfiles {
namespace {

// Holds the five numbers that a line of waves begins with.
constexpr std::size_t EnoughBytes = 128;
constexpr std::ptrdiff_t ListFields = 3;

using Recognised = std::variant<FileType, FileFault>;

bool IsDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

FileFault NoRunFile(std::uint64_t offset, std::uint64_t size) {
  return {FileFault::Kind::NoRunFile, offset, size};
}

Recognised RecogniseBinary(std::string_view bytes, std::uint64_t size) {
  const std::string_view magic = bytes.substr(0, 4);
  if (magic == "KVXR") {
    return FileType{Kind::Rates, Form::Binary};
  }
  if (magic == "KVXO") {
    return FileType{Kind::Waves, Form::Binary};
  }
  if (magic != "KVXS") {
    const bool begun = std::string_view("KVX").starts_with(magic);
    return begun ? FileFault{FileFault::Kind::CutOff, 0, size} : NoRunFile(0, size);
  }
  if (bytes == magic) {
    return FileType{Kind::Unknown, Form::Binary};
  }
  if (bytes[magic.size()] == '\0') {
    return FileType{Kind::Waves, Form::Binary};
  }
  return IsDigit(bytes[magic.size()]) ? Recognised(FileType{Kind::List, Form::Binary})
                                      : NoRunFile(magic.size(), size);
}

Recognised RecogniseCsv(std::string_view bytes, std::uint64_t size) {
  if (bytes.empty()) {
    return FileType{Kind::Unknown, Form::Csv};
  }
  if (bytes.starts_with('t')) {
    return FileType{Kind::Rates, Form::Csv};
  }
  if (!IsDigit(bytes.front())) {
    return NoRunFile(0, size);
  }
  const std::string_view line = bytes.substr(0, bytes.find('\n'));
  const auto fields = std::count(line.begin(), line.end(), ',');
  if (fields > ListFields || (fields == ListFields && line.back() != ',')) {
    return FileType{Kind::Waves, Form::Csv};
  }
  const bool ends = line.size() < bytes.size();
  return FileType{ends ? Kind::List : Kind::Unknown, Form::Csv};
}

Recognised RecogniseJson(std::string_view bytes, std::uint64_t size) {
  if (!bytes.empty() && bytes.front() != '[') {
    return NoRunFile(0, size);
  }
  if (bytes.starts_with("[,")) {
    return FileType{Kind::Rates, Form::Json};
  }
  if (bytes.starts_with("[{\"n")) {
    return FileType{Kind::Waves, Form::Json};
  }
  return FileType{bytes.starts_with("[{\"t") ? Kind::List : Kind::Unknown, Form::Json};
}

Recognised RecogniseForm(Form form, std::string_view bytes, std::uint64_t size) {
  switch (form) {
    case Form::Binary:
      return RecogniseBinary(bytes, size);
    case Form::Csv:
      return RecogniseCsv(bytes, size);
    case Form::Json:
      break;
  }
  return RecogniseJson(bytes, size);
}

}  // namespace

std::optional<Form> FormOfName(const std::string& path) {
  if (path.ends_with(".bin")) {
    return Form::Binary;
  }
  if (path.ends_with(".csv")) {
    return Form::Csv;
  }
  return path.ends_with(".json") ? std::optional(Form::Json) : std::nullopt;
}

std::string HeadInWords(Form form) {
  switch (form) {
    case Form::Binary:
      return "\"KVXS\" and 10 digits (events), \"KVXS\" or \"KVXO\", 4 zero bytes and 8 of the time (waves), or "
             "\"KVXR\", "
             "4 zero bytes and 8 of the time (rates)";
    case Form::Csv:
      return "a digit (events, waves), or the line of column names, \"timestamp,rate_in_ch0,...\" (rates)";
    case Form::Json:
      break;
  }
  return "\"[\"";
}

Recognised Recognise(const std::string& path) {
  FileScanner in(path);
  const std::string_view bytes = in.Peek(EnoughBytes);
  if (!in.Good()) {
    return FileFault{FileFault::Kind::CannotOpen};
  }
  if (bytes.size() < std::min<std::uint64_t>(EnoughBytes, in.Size())) {
    return FileFault{FileFault::Kind::ReadError, 0, in.Size()};
  }
  const std::optional<Form> form = FormOfName(path);
  return form ? RecogniseForm(*form, bytes, in.Size()) : NoRunFile(0, in.Size());
}

}  // namespace korvax::runfiles
