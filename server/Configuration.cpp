#include "server/Configuration.h"

#include "framework/JsonFile.h"

std::optional<Configuration> Configuration::Load(const QString& path) {
  const QJsonDocument document = korvax::ReadJsonFile(path);
  if (document.isNull()) {
    return std::nullopt;
  }
  const QJsonObject top = document.object();
  return Configuration{top["storage"].toObject()["file_path"].toString(), top["Hardware"].toArray(),
                       top["processing"].toArray(), top["network"]};
}
