#include "server/Configuration.h"

#include <QFile>
#include <QJsonDocument>

std::optional<Configuration> Configuration::Load(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
    return std::nullopt;
  }
  const QString text = QString::fromUtf8(file.readAll());
  const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
  if (document.isNull()) {
    return std::nullopt;
  }
  const QJsonObject top = document.object();
  return Configuration{top["storage"].toObject()["file_path"].toString(), top["Hardware"].toArray(),
                       top["processing"].toArray()};
}
