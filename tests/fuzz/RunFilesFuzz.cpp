// The first byte of the input selects a file's name and how it is read, the rest is the file.

#include "client/RunSummary.h"
#include "runfiles/CsvText.h"
#include "runfiles/FileSummary.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzProcess.h"

#include <array>
#include <cstdlib>

namespace {

using namespace korvax::runfiles;

constexpr std::array Names{"file.bin", "file.csv", "file.json", "file.stat"};
constexpr std::array Kinds{Kind::List, Kind::Waves, Kind::Rates, Kind::Unknown};
constexpr std::uint8_t RunSummaryBit = 0x80;

// As one that is told what it reads.
void ReadAs(const std::string& path, const FileType& type) {
  CsvHead(type.kind);
  const std::optional<FileFault> fault = WriteCsv(path, type, [](std::string_view) { return true; });
  if (fault) {
    fault->Text();
  }
}

// What is kept of a damaged file must be a whole one of the same records.
void Recover(const char* name, const QByteArray& bytes, const FileSummary& summary) {
  if (!summary.wholeBytes || !summary.fault) {
    return;
  }
  const QByteArray kept = bytes.left(static_cast<int>(*summary.wholeBytes));
  const bool isJson = summary.type->form == Form::Json;
  const QString path = fuzz::WriteScratchFile(QLatin1String(name), isJson ? kept + ']' : kept);
  const FileSummary recovered = Summarise(path.toStdString());
  if (recovered.fault || recovered.records != summary.records || recovered.last != summary.last) {
    std::abort();
  }
}

void ReadRunFile(std::uint8_t choice, const QByteArray& bytes) {
  const char* const name = Names[choice % Names.size()];
  const std::string path = fuzz::WriteScratchFile(QLatin1String(name), bytes).toStdString();
  const FileSummary summary = Summarise(path);
  if (summary.fault) {
    summary.fault->Text();
  }
  summary.PerSecond(summary.records);
  const Kind kind = Kinds[choice / Names.size() % Kinds.size()];
  ReadAs(path, summary.type.value_or(FileType{kind, Form::Binary}));
  // As a reader that expects something else; the name's form stays.
  ReadAs(path, {kind, FormOfName(path).value_or(Form::Binary)});
  Recover(name, bytes, summary);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  fuzz::Input input(data, size);
  const auto choice = input.Take<std::uint8_t>();
  if ((choice & RunSummaryBit) == 0) {
    ReadRunFile(choice, input.Rest());
  } else {
    fuzz::WriteScratchFile(korvax::client::runSummaryName, input.Rest());
    korvax::client::ReadRunSummary(fuzz::ScratchFolder());
  }
  return 0;
}
