#include "framework/KorvaxPayload_RateCounters.h"

#include "framework/ByteWriter.h"

KorvaxPayload_RateCounters::KorvaxPayload_RateCounters(quint32 channels)
    : KorvaxPayload(StaticKind, 1),
      channelCount(channels),
      ratesIn(channels),
      countersIn(channels),
      ratesOut(channels),
      countersOut(channels),
      startRatesIn(channels),
      startRatesOut(channels) {}

std::unique_ptr<KorvaxPayload> KorvaxPayload_RateCounters::Clone() const {
  return std::make_unique<KorvaxPayload_RateCounters>(*this);
}

// Kept: only the low half of each counter is written, and four zero bytes stand behind the channel count.
void KorvaxPayload_RateCounters::WriteBinary(korvax::ByteWriter& out) const {
  out.U64(timestamp);
  out.U32(channelCount);
  out.U32(0);
  for (std::size_t c = 0; c < channelCount; ++c) {
    out.F64(ratesIn[c]);
    out.U32(static_cast<quint32>(countersIn[c]));
    out.F64(ratesOut[c]);
    out.U32(static_cast<quint32>(countersOut[c]));
  }
}

void KorvaxPayload_RateCounters::WriteCsv(korvax::ByteWriter& out) const {
  out.Decimal(timestamp).Text(",").Decimal(channelCount).Text(",");
  for (std::size_t c = 0; c < channelCount; ++c) {
    out.Fixed(ratesIn[c]).Text(",").Decimal(countersIn[c]).Text(",");
    out.Fixed(ratesOut[c]).Text(",").Decimal(countersOut[c]).Text(",");
  }
}

// Kept: the object has no closing brace.
void KorvaxPayload_RateCounters::WriteJson(korvax::ByteWriter& out) const {
  out.Text("{\"timestamp\":").Decimal(timestamp).Text(",\"nchannels\":").Decimal(channelCount).Text(",");
  out.Text("\"rates_in\": [ ").Joined(ratesIn).Text("], ");
  out.Text("\"counters_in\": [ ").Joined(countersIn).Text("], ");
  out.Text("\"rates_out\": [ ").Joined(ratesOut).Text("], ");
  out.Text("\"counters_out\": [ ").Joined(countersOut).Text("] ");
}

bool KorvaxPayload_RateCounters::Write(quint32 format, korvax::ByteWriter& out) const {
  switch (format) {
    case korvax::FormatBinary:
      WriteBinary(out);
      return true;
    case korvax::FormatCsv:
      WriteCsv(out);
      return true;
    case korvax::FormatJson:
      WriteJson(out);
      return true;
    default:
      return false;
  }
}
