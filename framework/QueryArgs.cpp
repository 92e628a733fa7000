#include "framework/QueryArgs.h"

#include "framework/JsonText.h"

namespace korvax {

QueryArgs::QueryArgs(const QString& message)
    : message_(ParseJson(message.toUtf8()).object()), elements_(message_.value("args").toArray()) {}

QString QueryArgs::Text(const char* key) const {
  for (int i = elements_.size() - 1; i >= 0; --i) {
    const QJsonValue value = elements_[i].toObject().value(QLatin1String(key));
    if (!value.isUndefined()) {
      return value.toString();
    }
  }
  return {};
}

}  // namespace korvax
