#include "framework/JsonFile.h"

#include <QFile>
#include <QFileInfo>

namespace korvax {

QJsonDocument ReadJsonFile(const QString& path) {
  if (!QFileInfo(path).isFile()) {
    return {};  // reading from a pipe or a device may never end
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
    return {};
  }
  const QByteArray text = file.read(LargestJsonFile + 1);
  if (text.size() > LargestJsonFile) {
    return {};
  }
  // By way of a text: bytes that are no UTF-8 become replacement characters instead of a refusal.
  return QJsonDocument::fromJson(QString::fromUtf8(text).toUtf8());
}

}  // namespace korvax
