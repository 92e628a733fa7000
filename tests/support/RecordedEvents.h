#pragma once

#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <vector>

namespace test {

/// What a list file says of an event, as far as analysis goes.
struct RecordedEvent {
  quint64 timestamp = 0;
  quint32 channel = 0;
  quint32 energyRaw = 0;
  bool operator==(const RecordedEvent&) const = default;
};
using RecordedEvents = std::vector<RecordedEvent>;

inline constexpr int ListHeaderSize = 14;  // "KVXS" and ten digits
inline constexpr int ListEventSize = 25;

/// The whole events of a binary list file, in its order.
inline RecordedEvents EventsIn(const QByteArray& file) {
  RecordedEvents events;
  for (int at = ListHeaderSize; at + ListEventSize <= file.size(); at += ListEventSize) {
    const char* const event = file.constData() + at;
    events.push_back({qFromLittleEndian<quint64>(event), qFromLittleEndian<quint32>(event + 8),
                      qFromLittleEndian<quint32>(event + 12)});
  }
  return events;
}

/// The events of one that lies on disk; none when there is no such file.
inline RecordedEvents EventsOfFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? EventsIn(file.readAll()) : RecordedEvents();
}

/// A binary list file of the events, flags and calibrated energies 0.
inline QByteArray ListFileOf(const RecordedEvents& events) {
  QByteArray file =
      QByteArrayLiteral("KVXS1700000000") + QByteArray(static_cast<int>(events.size()) * ListEventSize, '\0');
  char* at = file.data() + ListHeaderSize;
  for (const RecordedEvent& event : events) {
    qToLittleEndian(event.timestamp, at);
    qToLittleEndian(event.channel, at + 8);
    qToLittleEndian(event.energyRaw, at + 12);
    qToLittleEndian(event.energyRaw, at + 16);
    at += ListEventSize;
  }
  return file;
}

}  // namespace test
