#pragma once

#include <QString>

namespace korvax {

/// What a client or run control may set. A worker takes it as a whole, so that no file is named from half of an
/// old and half of a new setting.
struct DumpSettings {
  qint32 eventsPerFile = 0;
  qint32 dumpTime = 0;    ///< ms between recorded waves; no other recorder uses it
  QString fileType = {};  ///< "BIN", "CSV" or "JSON"; recorders answer for other texts
  QString filePath = {};  ///< the storage root
  QString runId = {};     ///< the run's folder in it

  void Configure(qint32 events, const QString& type, const QString& path) {
    eventsPerFile = events;
    fileType = type;
    filePath = path;
  }
};

/// What became of the records of a run. A record stands in one of the first four.
struct DumpCounts {
  quint64 recorded = 0;     ///< written
  quint64 discarded = 0;    ///< arrived in a pause, still waited at a stop, or left out as designed
  quint64 failed = 0;       ///< could not be written; or arrived after recording had stopped by itself
  quint64 dropped = 0;      ///< refused by the full queue in front of the block
  quint64 overwritten = 0;  ///< of those recorded: in a file that was opened again for the next ones
};

}  // namespace korvax
