#pragma once

#include <QLatin1String>
#include <QtGlobal>

#include <memory>

namespace korvax {
class ByteWriter;

/// Run-file formats of KorvaxPayload::Write.
inline constexpr quint32 FormatBinary = 0;
inline constexpr quint32 FormatCsv = 1;
inline constexpr quint32 FormatJson = 2;
}  // namespace korvax

/// One data item of the stream, polymorphic so that a tee can copy it and a recorder can write it without
/// knowing its kind. Owned by exactly one batch (or sorting buffer) at a time and touched by one thread at a
/// time: no record has a lock.
class KorvaxPayload {
public:
  /// What the record is, for consumers that need its fields. Separate from the type text, which copies of
  /// waves lose.
  enum class Kind : quint8 { Energy, Wave, Waves, RateCounters };

  virtual ~KorvaxPayload() = default;

  /// A deep copy of the same class; each class says what its copy leaves behind.
  virtual std::unique_ptr<KorvaxPayload> Clone() const = 0;

  /// Appends the record to a run file's buffer in one of the formats above. False, with nothing appended, for
  /// any other format and for records that have no form in list files.
  virtual bool Write(quint32 format, korvax::ByteWriter& out) const = 0;

  Kind PayloadKind() const { return kind_; }
  /// "energy", "waveform" or "rate_counters" after the kind; empty in a copy of a wave. Always a literal.
  QLatin1String TypeText() const { return named_ ? TextOf(kind_) : QLatin1String(); }

  /// How many events the record stands for in run statistics.
  qint32 count = 0;

protected:
  KorvaxPayload(Kind kind, qint32 eventCount) : count(eventCount), kind_(kind) {}
  KorvaxPayload(const KorvaxPayload&) = default;
  KorvaxPayload& operator=(const KorvaxPayload&) = default;

  /// Takes the type text away.
  void Unname() { named_ = false; }

private:
  static QLatin1String TextOf(Kind kind) {
    switch (kind) {
      case Kind::Energy:
        return QLatin1String("energy");
      case Kind::RateCounters:
        return QLatin1String("rate_counters");
      case Kind::Wave:
      case Kind::Waves:
        break;
    }
    return QLatin1String("waveform");
  }

  // Small, and last: the members of events stand in the room behind them.
  Kind kind_;
  bool named_ = true;
};

namespace korvax {

/// The record as T, or null when it is of another kind. T names its kind as T::StaticKind.
template <typename T>
const T* PayloadCast(const KorvaxPayload* record) {
  return record != nullptr && record->PayloadKind() == T::StaticKind ? static_cast<const T*>(record) : nullptr;
}

}  // namespace korvax
