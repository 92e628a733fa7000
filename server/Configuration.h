#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/// The configuration file as start-up reads it. Missing or mistyped keys read as empty.
struct Configuration {
  QString storagePath;    ///< "storage" → "file_path": the folder for run files
  QJsonArray hardware;    ///< the boards
  QJsonArray processing;  ///< the processing groups
  QJsonValue network;     ///< who may connect; as it stands in the file

  /// Nothing when the file can't be read or isn't JSON.
  static std::optional<Configuration> Load(const QString& path);
};
