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

  /// "energy", "waveform", "rate_counters" or empty. Always a literal: it costs no allocation and no counting.
  QLatin1String typeText;
  /// How many events the record stands for in run statistics.
  qint32 count = 0;

protected:
  KorvaxPayload(Kind kind, QLatin1String text, qint32 eventCount)
      : typeText(text), count(eventCount), kind_(kind) {}
  KorvaxPayload(const KorvaxPayload&) = default;
  KorvaxPayload& operator=(const KorvaxPayload&) = delete;

private:
  Kind kind_;
};

namespace korvax {

/// The record as T, or null when it is of another kind. T names its kind as T::StaticKind.
template <typename T>
const T* PayloadCast(const KorvaxPayload* record) {
  return record != nullptr && record->PayloadKind() == T::StaticKind ? static_cast<const T*>(record) : nullptr;
}

}  // namespace korvax
