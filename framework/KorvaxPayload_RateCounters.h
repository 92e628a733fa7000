#pragma once

#include "framework/KorvaxPayload.h"

#include <vector>

/// One reading of a board's rate counters. Every series has one element per channel; the last channel is T0.
class KorvaxPayload_RateCounters final : public KorvaxPayload {
public:
  static constexpr Kind StaticKind = Kind::RateCounters;

  /// All series are zero.
  explicit KorvaxPayload_RateCounters(quint32 channels);

  std::unique_ptr<KorvaxPayload> Clone() const override;
  bool Write(quint32 format, korvax::ByteWriter& out) const override;

  quint64 timestamp = 0;  ///< board time units
  double interval = 0.0;  ///< seconds over which the rates were taken
  quint32 channelCount;
  std::vector<double> ratesIn;  ///< per second
  std::vector<quint64> countersIn;
  std::vector<double> ratesOut;  ///< per second
  std::vector<quint64> countersOut;
  std::vector<double> startRatesIn;
  std::vector<double> startRatesOut;

private:
  void WriteBinary(korvax::ByteWriter& out) const;
  void WriteCsv(korvax::ByteWriter& out) const;
  void WriteJson(korvax::ByteWriter& out) const;
};
