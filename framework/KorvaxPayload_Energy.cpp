#include "framework/KorvaxPayload_Energy.h"

#include "framework/ByteWriter.h"

#include <bit>

std::unique_ptr<KorvaxPayload> KorvaxPayload_Energy::Clone() const {
  return std::make_unique<KorvaxPayload_Energy>(*this);
}

// Kept: the raw energy stands twice and only the low half of the calibrated energy follows. Readers of list
// files depend on these 25 bytes.
void KorvaxPayload_Energy::WriteBinary(korvax::ByteWriter& out) const {
  out.U64(timestamp);
  out.U32(channel);
  out.U32(energyRaw);
  out.U32(energyRaw);
  out.U32(static_cast<quint32>(std::bit_cast<quint64>(energy)));
  out.U8(static_cast<quint8>(flag1 * 2 + flag0));
}

bool KorvaxPayload_Energy::Write(quint32 format, korvax::ByteWriter& out) const {
  switch (format) {
    case korvax::FormatBinary:
      WriteBinary(out);
      return true;
    case korvax::FormatCsv:
      out.Decimal(timestamp).Text(",").Decimal(channel).Text(",").Decimal(energyRaw).Text(",\n");
      return true;
    case korvax::FormatJson:
      out.Text("{\"timestamp\":").Decimal(timestamp).Text(",\"channel\":").Decimal(channel);
      out.Text(",\"energy_raw\":").Decimal(energyRaw).Text("}\n");
      return true;
    default:
      return false;
  }
}
