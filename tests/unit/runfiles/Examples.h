#pragma once

#include "runfiles/FileType.h"
#include "tests/support/TemporaryFolder.h"

#include <ostream>
#include <string>
#include <vector>

namespace test {

/// A small file, written by hand.
struct Example {
  const char* name;
  const char* fileName;
  korvax::runfiles::FileType type;
  std::string head;
  std::vector<std::string> records;
  std::string tail;

  std::string Bytes() const;

  friend void PrintTo(const Example& example, std::ostream* out) { *out << example.name; }
};

/// Two records of every kind in every form.
const std::vector<Example>& Examples();
const Example& ExampleOf(korvax::runfiles::Kind kind, korvax::runfiles::Form form);

template <typename Record>
struct Content {
  std::vector<Record> records;
  std::optional<korvax::runfiles::FileFault> fault;
  std::optional<std::uint64_t> created;
};

/// Reads to the end.
template <typename Record>
Content<Record> ReadAll(std::unique_ptr<korvax::runfiles::RecordReader<Record>> reader) {
  Content<Record> content;
  for (Record record; reader->Next(record);) {
    content.records.push_back(record);
  }
  Record unused;
  if (reader->Next(unused)) {
    throw std::logic_error("a record behind the last one");
  }
  content.fault = reader->Fault();
  content.created = reader->Created();
  return content;
}

}  // namespace test
