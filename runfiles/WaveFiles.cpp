#include "runfiles/WaveFiles.h"

#include "runfiles/ScannedReader.h"

#include <bit>

namespace korvax::runfiles {
namespace {

using namespace std::string_view_literals;

constexpr std::uint64_t BytesPerSample = 8 + 4;

std::optional<std::uint64_t> ReadBinaryHead(FileScanner& in) {
  in.Expect("KVX");
  if (!in.Accept('O')) {  // follows a file that was full
    in.Expect("S");
  }
  in.Expect("\0\0\0\0"sv);
  const auto created = in.Binary<std::uint64_t>();
  return in.Good() ? std::optional(created) : std::nullopt;
}

std::uint64_t Samples(const WaveRecord& record) {
  return std::uint64_t{record.channels} * record.samples;
}

// Takes the samples of each channel by `readAnalog` and `readDigital`; the vectors grow with what is really there.
template <typename Analog, typename Digital>
void ReadChannels(FileScanner& in, WaveRecord& record, Analog readAnalog, Digital readDigital) {
  for (std::uint64_t taken = 0; taken < Samples(record) && in.Good(); taken += record.samples) {
    for (std::uint32_t i = 0; i < record.samples && in.Good(); ++i) {
      record.analog.push_back(readAnalog());
    }
    for (std::uint32_t i = 0; i < record.samples && in.Good(); ++i) {
      record.digital.push_back(readDigital());
    }
  }
}

// Before the samples are read: `offset` is where the record begins, `leastBytes` what a sample takes at least.
void CheckSize(FileScanner& in, WaveRecord& record, std::uint64_t offset, std::uint64_t leastBytes) {
  record.analog.clear();
  record.digital.clear();
  if (Samples(record) > MostSamples) {
    in.Refuse(offset);
  } else if (Samples(record) * leastBytes > in.Remaining()) {
    in.StopAtEndOfFile();
  }
}

void ReadBinary(FileScanner& in, bool, WaveRecord& record) {
  const std::uint64_t offset = in.Offset();
  record.channels = in.Binary<std::uint32_t>();
  record.samples = in.Binary<std::uint32_t>();
  record.analogTraces = in.Binary<std::uint32_t>();
  record.digitalTraces = in.Binary<std::uint32_t>();
  in.Expect("\0\0\0\0"sv);
  in.Expect("\1\0\0\0"sv);
  record.timestamp = in.Binary<std::uint64_t>();
  CheckSize(in, record, offset, BytesPerSample);
  ReadChannels(
      in, record, [&in] { return std::bit_cast<double>(in.Binary<std::uint64_t>()); },
      [&in] { return in.Binary<std::uint32_t>(); });
}

template <typename Number>
Number ReadCsvField(FileScanner& in) {
  const auto value = in.Decimal<Number>();
  in.Expect(",");
  return value;
}

void ReadCsv(FileScanner& in, bool, WaveRecord& record) {
  const std::uint64_t offset = in.Offset();
  record.channels = ReadCsvField<std::uint32_t>(in);
  record.samples = ReadCsvField<std::uint32_t>(in);
  record.analogTraces = ReadCsvField<std::uint32_t>(in);
  record.digitalTraces = ReadCsvField<std::uint32_t>(in);
  record.timestamp = ReadCsvField<std::uint64_t>(in);
  CheckSize(in, record, offset, 0);
  ReadChannels(
      in, record, [&in] { return ReadCsvField<double>(in); }, [&in] { return ReadCsvField<std::uint32_t>(in); });
  in.Expect("\n");
}

// Takes "value,value,…]", of `count` values.
template <typename Number, typename Value>
void ReadJsonArray(FileScanner& in, std::uint32_t count, std::vector<Value>& values) {
  for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
    in.Expect(i == 0 ? "" : ",");
    values.push_back(in.Decimal<Number>());
  }
  in.Expect("]");
}

// Kept: a record of no channels ends with its "channels" array left open.
void ReadJsonChannels(FileScanner& in, WaveRecord& record) {
  for (std::uint32_t channel = 0; channel < record.channels && in.Good(); ++channel) {
    in.Expect(channel == 0 ? "{\"analog_traces\": [" : ",{\"analog_traces\": [");
    ReadJsonArray<std::int32_t>(in, record.samples, record.analog);
    in.Expect(",\"digital_traces\": [");
    ReadJsonArray<std::uint32_t>(in, record.samples, record.digital);
    in.Expect("}");
  }
  in.Expect(record.channels == 0 ? "" : "]}");
}

void ReadJson(FileScanner& in, bool isFirst, WaveRecord& record) {
  const std::uint64_t offset = in.Offset();
  in.Expect(isFirst ? "{\"n_channels\":" : ",{\"n_channels\":");
  record.channels = in.Decimal<std::uint32_t>();
  in.Expect(",\"n_samples\":");
  record.samples = in.Decimal<std::uint32_t>();
  in.Expect(",\"n_analog\":");
  record.analogTraces = in.Decimal<std::uint32_t>();
  in.Expect(",\"n_digital\":");
  record.digitalTraces = in.Decimal<std::uint32_t>();
  in.Expect(",\"timestamp\":");
  record.timestamp = in.Decimal<std::uint64_t>();
  in.Expect(",\"channels\":[");
  CheckSize(in, record, offset, 0);
  ReadJsonChannels(in, record);
}

constexpr Layout<WaveRecord> Layouts[] = {
    {Form::Binary, ReadBinaryHead, ReadBinary},
    {Form::Csv, nullptr, ReadCsv},
    {Form::Json, ReadJsonHead, ReadJson},
};

}  // namespace

std::unique_ptr<RecordReader<WaveRecord>> OpenWaves(const std::string& path, Form form) {
  return OpenScanned(path, form, Layouts);
}

}  // namespace korvax::runfiles
