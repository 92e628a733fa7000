#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>

namespace test {

/// The object or array that the text spells. A text that isn't JSON is a mistake of the test itself.
inline QJsonDocument Document(const QByteArray& text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(text, &error);
  if (error.error != QJsonParseError::NoError) {
    throw std::invalid_argument(error.errorString().toStdString() + " in " + text.toStdString());
  }
  return document;
}

inline QJsonObject Object(const QByteArray& text) {
  return Document(text).object();
}

inline QJsonArray Array(const QByteArray& text) {
  return Document(text).array();
}

}  // namespace test
