#pragma once

#include "framework/KorvaxPayload.h"

/// One detected pulse.
class KorvaxPayload_Energy final : public KorvaxPayload {
public:
  static constexpr Kind StaticKind = Kind::Energy;

  KorvaxPayload_Energy() : KorvaxPayload(StaticKind, 1) {}

  std::unique_ptr<KorvaxPayload> Clone() const override;
  bool Write(quint32 format, korvax::ByteWriter& out) const override;

  quint8 flag0 = 0;        ///< first event flag
  quint8 flag1 = 0;        ///< second event flag; writers combine both as flag1 * 2 + flag0
  quint32 extraWord = 0;   ///< carried unchanged from the board
  quint64 timestamp = 0;   ///< board time units; the key by which the stream is sorted
  qint64 arrivalTime = 0;  ///< µs since 1970-01-01 UTC, written by the time-sorting block
  double energy = 0.0;     ///< calibrated, or 0.0
  quint32 channel = 0;     ///< board channel
  quint32 energyRaw = 0;   ///< as the board measured it

private:
  void WriteBinary(korvax::ByteWriter& out) const;
};

// Events pass from core to core by the million: the first fields stand in what the base leaves of its last word.
static_assert(sizeof(KorvaxPayload_Energy) == 56);
