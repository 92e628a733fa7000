#include "sinks/WaveFormat.h"

#include "sinks/BinIndex.h"

#include <algorithm>

namespace korvax::wavefile {

namespace {

// A slot that the store has no room for reads as zeros.
std::vector<double> AnalogSamples(const TraceStore& store, qint32 channel) {
  std::vector<double> samples(static_cast<std::size_t>(store.Shape().samples));
  const auto slot = store.Analog(channel);
  std::copy(slot.begin(), slot.end(), samples.begin());
  return samples;
}

std::vector<qint32> Truncated(const std::vector<double>& samples) {
  std::vector<qint32> integers(samples.size());
  std::transform(samples.begin(), samples.end(), integers.begin(), TruncateToBin);
  return integers;
}

}  // namespace

// Kept: the first file of a dump has the magic of list files. Readers of wave files accept both.
void AppendBinaryHead(bool firstOfDump, qint64 creationTime, ByteWriter& out) {
  out.Text(firstOfDump ? "KVXS" : "KVXO").U32(0).U64(static_cast<quint64>(creationTime));
}

void AppendBinary(const TraceStore& store, qint32 waves, quint64 timestamp, ByteWriter& out) {
  const TraceShape& shape = store.Shape();
  out.U32(static_cast<quint32>(waves)).U32(static_cast<quint32>(shape.samples));
  out.U32(static_cast<quint32>(shape.analog)).U32(static_cast<quint32>(shape.digital));
  out.U32(0).U32(1).U64(timestamp);
  for (qint32 c = 0; c < waves; ++c) {
    for (const double sample : AnalogSamples(store, c)) {
      out.F64(sample);
    }
    for (const quint32 word : store.DigitalWords(c)) {
      out.U32(word);
    }
  }
}

void AppendCsv(const TraceStore& store, qint32 waves, quint64 timestamp, ByteWriter& out) {
  const TraceShape& shape = store.Shape();
  out.Decimal(waves).Text(",").Decimal(shape.samples).Text(",").Decimal(shape.analog).Text(",");
  out.Decimal(shape.digital).Text(",").Decimal(timestamp).Text(",");
  for (qint32 c = 0; c < waves; ++c) {
    for (const double sample : AnalogSamples(store, c)) {
      out.General(sample).Text(",");
    }
    for (const quint32 word : store.DigitalWords(c)) {
      out.Decimal(word).Text(",");
    }
  }
  out.Text("\n");
}

// Kept: a record without a channel stays open.
void AppendJson(const TraceStore& store, qint32 waves, quint64 timestamp, ByteWriter& out) {
  const TraceShape& shape = store.Shape();
  out.Text("{\"n_channels\":").Decimal(waves).Text(",\"n_samples\":").Decimal(shape.samples);
  out.Text(",\"n_analog\":").Decimal(shape.analog).Text(",\"n_digital\":").Decimal(shape.digital);
  out.Text(",\"timestamp\":").Decimal(timestamp).Text(",\"channels\":[");
  for (qint32 c = 0; c < waves; ++c) {
    out.Text("{\"analog_traces\": [").Joined(Truncated(AnalogSamples(store, c)));
    out.Text("],\"digital_traces\": [").Joined(store.DigitalWords(c));
    out.Text(c == waves - 1 ? "]}]}" : "]},");
  }
}

}  // namespace korvax::wavefile
