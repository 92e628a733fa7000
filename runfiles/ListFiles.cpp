#include "runfiles/ListFiles.h"

#include "runfiles/ScannedReader.h"

namespace korvax::runfiles {
namespace {

void ReadCsv(FileScanner& in, bool, ListRecord& record) {
  record = {};
  record.timestamp = in.Decimal<std::uint64_t>();
  in.Expect(",");
  record.channel = in.Decimal<std::uint32_t>();
  in.Expect(",");
  record.energyRaw = in.Decimal<std::uint32_t>();
  in.Expect(",\n");
}

void ReadJson(FileScanner& in, bool isFirst, ListRecord& record) {
  record = {};
  in.Expect(isFirst ? "{\"timestamp\":" : ",\n{\"timestamp\":");
  record.timestamp = in.Decimal<std::uint64_t>();
  in.Expect(",\"channel\":");
  record.channel = in.Decimal<std::uint32_t>();
  in.Expect(",\"energy_raw\":");
  record.energyRaw = in.Decimal<std::uint32_t>();
  in.Expect("}\n");
}

constexpr Layout<ListRecord> TextLayouts[] = {{Form::Csv, nullptr, ReadCsv}, {Form::Json, ReadJsonHead, ReadJson}};

}  // namespace

std::unique_ptr<RecordReader<ListRecord>> OpenList(const std::string& path, Form form) {
  if (form == Form::Binary) {
    return std::make_unique<ListFileReader>(path);
  }
  return OpenScanned(path, form, TextLayouts);
}

}  // namespace korvax::runfiles
