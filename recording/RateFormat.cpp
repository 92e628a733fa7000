#include "recording/RateFormat.h"

#include <bit>
#include <span>
#include <string>

namespace korvax::ratefile {

namespace {

constexpr int HeadChannels = 32;

void AppendFloats(const std::vector<double>& values, ByteWriter& out) {
  for (const double value : values) {
    out.U32(std::bit_cast<quint32>(static_cast<float>(value)));
  }
}

void AppendWords(const std::vector<quint64>& values, ByteWriter& out) {
  for (const quint64 value : values) {
    out.U64(value);
  }
}

void AppendColumns(std::string_view name, ByteWriter& out) {
  for (int channel = 0; channel < HeadChannels; ++channel) {
    out.Text(name).Decimal(channel);
  }
}

// Each value with a comma behind it.
void AppendValues(std::span<const double> values, ByteWriter& out) {
  for (const double value : values) {
    out.General(value).Text(",");
  }
}

void AppendValues(std::span<const quint64> values, ByteWriter& out) {
  for (const quint64 value : values) {
    out.Decimal(value).Text(",");
  }
}

template <typename T>
std::span<const T> WithoutLast(const std::vector<T>& values) {
  return std::span(values).first(values.empty() ? 0 : values.size() - 1);
}

}  // namespace

void AppendBinaryHead(qint64 creationTime, ByteWriter& out) {
  out.Text("KVXR").U32(0).U64(static_cast<quint64>(creationTime));
}

void AppendBinary(qint64 timeMs, const KorvaxPayload_RateCounters& record, ByteWriter& out) {
  out.U64(static_cast<quint64>(timeMs)).U32(record.channelCount);
  AppendFloats(record.ratesIn, out);
  AppendFloats(record.ratesOut, out);
  AppendWords(record.countersIn, out);
  AppendWords(record.countersOut, out);
}

void AppendCsvHead(ByteWriter& out) {
  out.Text("timestamp");
  AppendColumns(",rate_in_ch", out);
  out.Text(",rate_in_T0");
  AppendColumns(",rate_out_ch", out);
  AppendColumns(",counts_in_ch", out);
  out.Text(",counts_in_T0");
  AppendColumns(",counts_out_ch", out);
  out.Text("\n");
}

// Kept: the last channel, T0, has no column for what went out, and a comma ends the line.
void AppendCsv(qint64 timeMs, const KorvaxPayload_RateCounters& record, ByteWriter& out) {
  out.Decimal(timeMs).Text(",");
  AppendValues(std::span(record.ratesIn), out);
  AppendValues(WithoutLast(record.ratesOut), out);
  AppendValues(std::span(record.countersIn), out);
  AppendValues(WithoutLast(record.countersOut), out);
  out.Text("\n");
}

// Kept: the first record of a file has the comma too. Readers skip it.
void AppendJson(qint64 timeMs, const KorvaxPayload_RateCounters& record, ByteWriter& out) {
  out.Text(",{\"timestamp\":").Decimal(timeMs);
  out.Text(",\"rate_in\":[").Joined(record.ratesIn);
  out.Text("],\"rate_out\":[").Joined(record.ratesOut);
  out.Text("],\"counts_in\":[").Joined(record.countersIn);
  out.Text("],\"counts_out\":[").Joined(record.countersOut).Text("]}");
}

}  // namespace korvax::ratefile
