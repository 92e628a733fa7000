#include "client/JsonAnswers.h"

namespace korvax::client {

QString QueryText(const QJsonObject& object) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString ArgumentQuery(const QJsonObject& argument) {
  return QueryText(QJsonObject{{QStringLiteral("args"), QJsonArray{argument}}});
}

Read<QJsonDocument> ReadJson(const QString& answer) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(answer.toUtf8(), &error);
  if (error.error != QJsonParseError::NoError) {
    return {{}, QStringLiteral("it is not JSON (%1 at byte %2)").arg(error.errorString()).arg(error.offset)};
  }
  return {document, {}};
}

Read<QJsonArray> ReadArray(const QString& answer) {
  const Read<QJsonDocument> document = ReadJson(answer);
  if (!document.value) {
    return {{}, document.fault};
  }
  if (!document.value->isArray()) {
    return {{}, QStringLiteral("it is not an array")};
  }
  return {document.value->array(), {}};
}

Read<QJsonObject> ReadResponse(const QString& answer) {
  const Read<QJsonArray> array = ReadArray(answer);
  if (!array.value) {
    return {{}, array.fault};
  }
  const QJsonObject response = array.value->first().toObject();
  if (array.value->size() != 1 || response.value(QStringLiteral("response")) != QJsonValue(true)) {
    return {{}, QStringLiteral("it is not one object with \"response\": true")};
  }
  return {response, {}};
}

QString ObedienceFault(const QString& answer) {
  return ReadResponse(answer).fault;
}

}  // namespace korvax::client
