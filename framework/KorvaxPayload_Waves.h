#pragma once

#include "framework/KorvaxPayload_Wave.h"

#include <vector>

/// The waves read together in one board read, channel by channel. Has no form in list files.
class KorvaxPayload_Waves final : public KorvaxPayload {
public:
  static constexpr Kind StaticKind = Kind::Waves;

  KorvaxPayload_Waves() : KorvaxPayload(StaticKind, 0) {}

  /// Clones every wave in order; the header below stays behind (0 in the copy).
  std::unique_ptr<KorvaxPayload> Clone() const override;
  bool Write(quint32 format, korvax::ByteWriter& out) const override;

  quint64 timestamp = 0;  ///< board time units
  quint32 headerWord1 = 0;
  qint32 samplesPerWave = 0;
  quint32 headerWord2 = 0;
  quint32 headerWord3 = 0;
  std::vector<std::unique_ptr<KorvaxPayload>> waves;  ///< KorvaxPayload_Wave records
};
