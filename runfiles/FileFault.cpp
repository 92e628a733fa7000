#include "runfiles/FileFault.h"

namespace korvax::runfiles {
namespace {

std::string Ending(const FileFault& fault) {
  const std::string at = "byte " + std::to_string(fault.offset);
  if (fault.size == fault.offset) {
    return "ends at " + at;
  }
  return Counted(fault.size - fault.offset, "byte") + " of an unfinished part from " + at + " on";
}

}  // namespace

std::string Counted(std::uint64_t count, const std::string& noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

std::string FileFault::Text() const {
  const std::string at = "byte " + std::to_string(offset);
  const std::string before = ", " + Counted(wholeRecords, "whole record") + " before";
  switch (kind) {
    case Kind::CannotOpen:
      return "can't be opened, or is no file";
    case Kind::ReadError:
      return "reading failed at " + at + before;
    case Kind::NoRunFile:
      return "begins otherwise than run files of its name's ending (.bin, .csv, .json), see " + at;
    case Kind::Malformed:
      return "malformed at " + at + before;
    case Kind::CutOff:
      return "cut off, " + Ending(*this) + before;
    case Kind::NotClosed:
      return "not closed, " + Ending(*this) + before;
  }
  return {};
}

}  // namespace korvax::runfiles
