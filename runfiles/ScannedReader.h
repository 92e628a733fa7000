#pragma once

#include "runfiles/FileScanner.h"
#include "runfiles/RecordReader.h"

#include <algorithm>
#include <memory>
#include <string>

namespace korvax::runfiles {

/// How one kind of file is read in one form.
template <typename Record>
struct Layout {
  Form form;
  /// Takes what stands before the first record; gives the creation time where there is one. Null: nothing stands.
  std::optional<std::uint64_t> (*readHead)(FileScanner& in);
  /// Takes a record, and in JSON what separates it from what stands before it.
  void (*readRecord)(FileScanner& in, bool isFirst, Record& record);
};

/// A reader on top of a scanner: counts the records and knows the ends of the three forms.
template <typename Record>
class ScannedReader final : public RecordReader<Record> {
public:
  ScannedReader(const std::string& path, const Layout<Record>& layout) : layout_(layout), in_(path) {
    if (layout_.readHead != nullptr) {
      created_ = layout_.readHead(in_);
    }
    if (in_.Good()) {
      whole_ = in_.Offset();
    }
  }

  bool Next(Record& record) override {
    if (!in_.Good() || AtProperEnd()) {
      return false;
    }
    layout_.readRecord(in_, records_ == 0, record);
    if (!in_.Good()) {
      return false;
    }
    ++records_;
    whole_ = in_.Offset();
    return true;
  }

  std::optional<FileFault> Fault() const override {
    using enum FileFault::Kind;
    if (in_.Good()) {
      return std::nullopt;
    }
    switch (*in_.Stopped()) {
      case FileScanner::Stop::CannotOpen:
        return FileFault{CannotOpen};
      case FileScanner::Stop::ReadError:
        return FileFault{ReadError, in_.Offset(), in_.Size(), records_};
      case FileScanner::Stop::Unexpected:
        return FileFault{Malformed, in_.Offset(), in_.Size(), records_};
      case FileScanner::Stop::EndOfFile:
        break;
    }
    return FileFault{layout_.form == Form::Json ? NotClosed : CutOff, whole_.value_or(0), in_.Size(), records_};
  }

  std::optional<std::uint64_t> WholeBytes() const override { return whole_; }
  std::optional<std::uint64_t> Created() const override { return created_; }

private:
  bool AtProperEnd() {
    if (layout_.form != Form::Json) {
      return in_.Remaining() == 0;
    }
    closed_ = closed_ || in_.Accept(']');
    if (closed_ && in_.Remaining() > 0) {
      in_.Refuse(in_.Offset());
    }
    return closed_;
  }

  const Layout<Record> layout_;
  FileScanner in_;
  std::optional<std::uint64_t> created_;
  std::optional<std::uint64_t> whole_;  // offset behind the last whole record, or the head
  std::uint64_t records_ = 0;
  bool closed_ = false;  // by the "]" of JSON
};

/// Opens a file with the one of `layouts` that is of its form.
template <typename Record, std::size_t Count>
std::unique_ptr<RecordReader<Record>> OpenScanned(const std::string& path, Form form,
                                                  const Layout<Record> (&layouts)[Count]) {
  return std::make_unique<ScannedReader<Record>>(path, *std::ranges::find(layouts, form, &Layout<Record>::form));
}

/// The head of every JSON file.
inline std::optional<std::uint64_t> ReadJsonHead(FileScanner& in) {
  in.Expect("[");
  return std::nullopt;
}

}  // namespace korvax::runfiles
