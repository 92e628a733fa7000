#include "framework/JsonFile.h"

#include "framework/JsonText.h"

#include <QFile>
#include <QFileInfo>

namespace korvax {

namespace {

// Part by part: Qt takes memory for all that it is asked for, however short the file is.
QByteArray ReadUpTo(qint64 count, QFile& file) {
  constexpr qint64 PartSize = 1 << 16;
  QByteArray text;
  while (text.size() < count) {
    const QByteArray part = file.read(PartSize);
    if (part.isEmpty()) {
      break;
    }
    text += part;
  }
  return text;
}

}  // namespace

QJsonDocument ReadJsonFile(const QString& path) {
  if (!QFileInfo(path).isFile()) {
    return {};  // reading from a pipe or a device may never end
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
    return {};
  }
  const QByteArray text = ReadUpTo(LargestJsonFile + 1, file);
  if (text.size() > LargestJsonFile) {
    return {};
  }
  // By way of a text: bytes that are no UTF-8 become replacement characters instead of a refusal.
  return ParseJson(QString::fromUtf8(text).toUtf8());
}

}  // namespace korvax
