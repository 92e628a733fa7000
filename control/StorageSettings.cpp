#include "control/StorageSettings.h"

#include "framework/JsonFile.h"

#include <QJsonObject>

StorageSettings StorageSettings::Load(const QString& configurationPath) {
  const QJsonObject storage = korvax::ReadJsonFile(configurationPath).object()["storage"].toObject();
  StorageSettings settings;
  settings.eventsPerFile = storage["events_per_file"].toInt();
  settings.wavedumpTimeInterval = storage["wavedump_time_interval"].toInt();
  settings.format = storage["format"].toString();
  settings.filePath = storage["file_path"].toString();
  settings.enableList = storage["enable_list"].toBool();
  settings.enableWave = storage["enable_wave"].toBool();
  settings.enableMcs = storage["enable_mcs"].toBool();
  return settings;
}
