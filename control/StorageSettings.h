#pragma once

#include <QString>

/// What the configuration's "storage" section says about runs. Missing or mistyped keys read as 0, empty or false.
struct StorageSettings {
  qint32 eventsPerFile = 0;
  qint32 wavedumpTimeInterval = 0;  ///< ms
  QString format;                   ///< "BIN", "CSV" or "JSON"
  QString filePath;                 ///< the storage root
  bool enableList = false;          ///< record events
  bool enableWave = false;          ///< record waves
  bool enableMcs = false;           ///< record rates

  /// As the file stands now; the defaults when it can't be read or isn't JSON.
  static StorageSettings Load(const QString& configurationPath);
};
