#include "runfiles/CsvText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace korvax::runfiles {
namespace {

constexpr std::size_t PieceSize = 1 << 16;
constexpr int Digits = 6;

template <typename Integer>
void AppendField(Integer value, std::string& text) {
  std::array<char, 24> field;
  text.append(field.data(), std::to_chars(field.data(), field.data() + field.size(), value).ptr);
  text += ',';
}

void AppendField(double value, std::string& text) {
  std::array<char, 24> field;
  char* const end = field.data() + field.size();
  text.append(field.data(), std::to_chars(field.data(), end, value, std::chars_format::general, Digits).ptr);
  text += ',';
}

template <typename Values>
void AppendFields(const Values& values, std::string& text) {
  for (const auto value : values) {
    AppendField(value, text);
  }
}

// The first `count`, or all where there are fewer.
template <typename Value>
std::span<const Value> First(std::size_t count, const std::vector<Value>& values) {
  return std::span(values).first(std::min(count, values.size()));
}

}  // namespace

std::string CsvHead(Kind kind) {
  return kind == Kind::Rates ? RateCsvHead() : "";
}

void AppendCsv(const ListRecord& record, std::string& text) {
  AppendField(record.timestamp, text);
  AppendField(record.channel, text);
  AppendField(record.energyRaw, text);
  text += '\n';
}

void AppendCsv(const WaveRecord& record, std::string& text) {
  AppendFields(std::array{record.channels, record.samples, record.analogTraces, record.digitalTraces}, text);
  AppendField(record.timestamp, text);
  const std::uint32_t channels = record.samples == 0 ? 0 : record.channels;
  for (std::uint32_t channel = 0; channel < channels; ++channel) {
    AppendFields(record.Analog(channel), text);
    AppendFields(record.Digital(channel), text);
  }
  text += '\n';
}

void AppendCsv(const RateRecord& record, std::string& text) {
  const std::size_t channels = record.ratesIn.size();
  const std::size_t withoutT0 = channels == 0 ? 0 : channels - 1;
  AppendField(record.milliseconds, text);
  AppendFields(record.ratesIn, text);
  AppendFields(First(withoutT0, record.ratesOut), text);
  AppendFields(record.countsIn, text);
  AppendFields(First(withoutT0, record.countsOut), text);
  text += '\n';
}

std::optional<FileFault> WriteCsv(const std::string& path, const FileType& type,
                                  const std::function<bool(std::string_view)>& write) {
  return WithReader(path, type, [&write]<typename Record>(RecordReader<Record>& reader) {
    std::string piece;
    bool wanted = true;
    for (Record record; wanted && reader.Next(record);) {
      AppendCsv(record, piece);
      if (piece.size() >= PieceSize) {
        wanted = write(piece);
        piece.clear();
      }
    }
    wanted = wanted && write(piece);
    return wanted ? reader.Fault() : std::nullopt;
  });
}

}  // namespace korvax::runfiles
