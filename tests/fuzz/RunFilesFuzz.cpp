// The first byte of the input selects a file's name and how it is read, the rest is the file.

#include "runfiles/CsvText.h"
#include "runfiles/FileSummary.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzProcess.h"

#include <array>

namespace {

using namespace korvax::runfiles;

constexpr std::array Names{"file.bin", "file.csv", "file.json", "file.stat"};
constexpr std::array Kinds{Kind::List, Kind::Waves, Kind::Rates, Kind::Unknown};

// As one that is told what it reads.
void ReadAs(const std::string& path, const FileType& type) {
  CsvHead(type.kind);
  const std::optional<FileFault> fault = WriteCsv(path, type, [](std::string_view) { return true; });
  if (fault) {
    fault->Text();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  fuzz::Input input(data, size);
  const auto choice = input.Take<std::uint8_t>();
  const char* const name = Names[choice % Names.size()];
  const std::string path = fuzz::WriteScratchFile(QLatin1String(name), input.Rest()).toStdString();
  const FileSummary summary = Summarise(path);
  if (summary.fault) {
    summary.fault->Text();
  }
  summary.PerSecond(summary.records);
  const auto type = summary.type.value_or(FileType{Kinds[choice / 4 % Kinds.size()], Form::Binary});
  ReadAs(path, type);
  // As a reader that expects something else; the name's form stays.
  ReadAs(path, {Kinds[choice / 4 % Kinds.size()], FormOfName(path).value_or(Form::Binary)});
  return 0;
}
