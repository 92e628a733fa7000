#include "runfiles/RateFiles.h"

#include "runfiles/ScannedReader.h"

#include <bit>
#include <charconv>
#include <span>

namespace korvax::runfiles {
namespace {

using namespace std::string_view_literals;

constexpr std::uint64_t BytesPerChannel = 4 + 4 + 8 + 8;
constexpr int HeadChannels = 32;
constexpr std::size_t LongestCount = 20;  // digits

std::optional<std::uint64_t> ReadBinaryHead(FileScanner& in) {
  in.Expect("KVXR\0\0\0\0"sv);
  const auto created = in.Binary<std::uint64_t>();
  return in.Good() ? std::optional(created) : std::nullopt;
}

void ReadFloats(FileScanner& in, std::uint32_t count, std::vector<double>& values) {
  values.clear();
  for (std::uint32_t i = 0; i < count; ++i) {
    values.push_back(static_cast<double>(std::bit_cast<float>(in.Binary<std::uint32_t>())));
  }
}

void ReadWords(FileScanner& in, std::uint32_t count, std::vector<std::uint64_t>& values) {
  values.clear();
  for (std::uint32_t i = 0; i < count; ++i) {
    values.push_back(in.Binary<std::uint64_t>());
  }
}

void ReadBinary(FileScanner& in, bool, RateRecord& record) {
  record.milliseconds = std::bit_cast<std::int64_t>(in.Binary<std::uint64_t>());
  const std::uint64_t offset = in.Offset();
  const auto channels = in.Binary<std::uint32_t>();
  if (channels > MostRateChannels) {
    in.Refuse(offset);
  } else if (channels * BytesPerChannel > in.Remaining()) {
    in.StopAtEndOfFile();
  }
  if (in.Good()) {
    ReadFloats(in, channels, record.ratesIn);
    ReadFloats(in, channels, record.ratesOut);
    ReadWords(in, channels, record.countsIn);
    ReadWords(in, channels, record.countsOut);
  }
}

std::optional<std::uint64_t> ReadCsvHead(FileScanner& in) {
  in.Expect(RateCsvHead());
  return std::nullopt;
}

// What a field means shows only at its line's end, so that each is read as a rate and, if it can be, as a count.
struct CsvField {
  double rate;
  std::optional<std::uint64_t> count;
  std::uint64_t offset;
};

CsvField ReadCsvField(FileScanner& in) {
  CsvField field{0, std::nullopt, in.Offset()};
  const std::string_view next = in.Peek(LongestCount + 1);
  std::uint64_t count = 0;
  const auto [end, error] = std::from_chars(next.data(), next.data() + next.size(), count);
  if (error == std::errc{} && end != next.data() + next.size() && *end == ',') {
    field.count = count;
  }
  field.rate = in.Decimal<double>();
  in.Expect(",");
  return field;
}

std::vector<CsvField> ReadCsvLine(FileScanner& in) {
  std::vector<CsvField> fields;
  while (in.Good() && !in.Accept('\n')) {
    fields.push_back(ReadCsvField(in));
    if (fields.size() > MostRateChannels * std::size_t{4}) {
      in.Refuse(in.Offset());
    }
  }
  return fields;
}

std::vector<double> Rates(std::span<const CsvField> fields) {
  std::vector<double> rates;
  for (const CsvField& field : fields) {
    rates.push_back(field.rate);
  }
  return rates;
}

std::vector<std::uint64_t> Counts(FileScanner& in, std::span<const CsvField> fields) {
  std::vector<std::uint64_t> counts;
  for (const CsvField& field : fields) {
    if (!field.count) {
      in.Refuse(field.offset);
    }
    counts.push_back(field.count.value_or(0));
  }
  return counts;
}

void ReadCsv(FileScanner& in, bool, RateRecord& record) {
  record = {};
  const std::uint64_t offset = in.Offset();
  record.milliseconds = in.Decimal<std::int64_t>();
  in.Expect(",");
  const std::vector<CsvField> line = ReadCsvLine(in);
  if (!in.Good() || line.empty()) {
    return;
  }
  if (line.size() % 4 != 2) {  // n, n - 1, n and n - 1 fields
    in.Refuse(offset);
    return;
  }
  const std::size_t channels = (line.size() + 2) / 4;
  const std::span<const CsvField> fields(line);
  record.ratesIn = Rates(fields.first(channels));
  record.ratesOut = Rates(fields.subspan(channels, channels - 1));
  record.countsIn = Counts(in, fields.subspan(2 * channels - 1, channels));
  record.countsOut = Counts(in, fields.last(channels - 1));
}

// Takes "value,value,…]", of any number of values.
template <typename Value>
void ReadJsonArray(FileScanner& in, std::vector<Value>& values) {
  values.clear();
  while (in.Good() && !in.Accept(']')) {
    in.Expect(values.empty() ? "" : ",");
    values.push_back(in.Decimal<Value>());
    if (values.size() > MostRateChannels) {
      in.Refuse(in.Offset());
    }
  }
}

// Kept: a "," stands before the first record, too.
void ReadJson(FileScanner& in, bool, RateRecord& record) {
  const std::uint64_t offset = in.Offset();
  in.Expect(",{\"timestamp\":");
  record.milliseconds = in.Decimal<std::int64_t>();
  in.Expect(",\"rate_in\":[");
  ReadJsonArray(in, record.ratesIn);
  in.Expect(",\"rate_out\":[");
  ReadJsonArray(in, record.ratesOut);
  in.Expect(",\"counts_in\":[");
  ReadJsonArray(in, record.countsIn);
  in.Expect(",\"counts_out\":[");
  ReadJsonArray(in, record.countsOut);
  in.Expect("}");
  const std::size_t channels = record.ratesIn.size();
  if (record.ratesOut.size() != channels || record.countsIn.size() != channels ||
      record.countsOut.size() != channels) {
    in.Refuse(offset);
  }
}

void AppendColumns(const std::string& name, bool withT0, std::string& line) {
  for (int channel = 0; channel < HeadChannels; ++channel) {
    line += ',' + name + "_ch" + std::to_string(channel);
  }
  line += withT0 ? ',' + name + "_T0" : "";
}

constexpr Layout<RateRecord> Layouts[] = {
    {Form::Binary, ReadBinaryHead, ReadBinary},
    {Form::Csv, ReadCsvHead, ReadCsv},
    {Form::Json, ReadJsonHead, ReadJson},
};

}  // namespace

std::string RateCsvHead() {
  std::string line = "timestamp";
  AppendColumns("rate_in", true, line);
  AppendColumns("rate_out", false, line);
  AppendColumns("counts_in", true, line);
  AppendColumns("counts_out", false, line);
  return line + '\n';
}

std::unique_ptr<RecordReader<RateRecord>> OpenRates(const std::string& path, Form form) {
  return OpenScanned(path, form, Layouts);
}

}  // namespace korvax::runfiles
