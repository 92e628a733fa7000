#include "configuration/Expectation.h"

#include "configuration/Words.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QStringList>

namespace korvax {

namespace {

struct TypeWords {
  QLatin1String type;
  QLatin1String one;
  QLatin1String several;
};

const TypeWords Types[] = {
    {QLatin1String("string"), QLatin1String("a text"), QLatin1String("texts")},
    {QLatin1String("integer"), QLatin1String("an integer"), QLatin1String("integers")},
    {QLatin1String("number"), QLatin1String("a number"), QLatin1String("numbers")},
    {QLatin1String("boolean"), QLatin1String("true or false"), QLatin1String("true or false")},
    {QLatin1String("object"), QLatin1String("an object"), QLatin1String("objects")},
    {QLatin1String("array"), QLatin1String("an array"), QLatin1String("arrays")},
};

QString TypeText(const QJsonValue& type, QLatin1String TypeWords::*form) {
  QStringList words;
  const QJsonArray several = type.isArray() ? type.toArray() : QJsonArray{type};
  for (const QJsonValue& each : several) {
    for (const TypeWords& known : Types) {
      if (each.toString() == known.type) {
        words << known.*form;
      }
    }
  }
  return words.join(QStringLiteral(" or "));
}

QString EnumText(const QJsonArray& values) {
  QStringList words;
  for (const QJsonValue& value : values) {
    words << ValueText(value);
  }
  return (words.size() > 1 ? QStringLiteral("one of ") : QString()) + words.join(QStringLiteral(", "));
}

QString LimitText(const QJsonObject& schema) {
  const QJsonValue least = schema["minimum"];
  const QJsonValue most = schema["maximum"];
  if (!least.isUndefined() && !most.isUndefined()) {
    return QStringLiteral(" from %1 to %2").arg(ValueText(least), ValueText(most));
  }
  if (!least.isUndefined()) {
    return QStringLiteral(" of at least %1").arg(ValueText(least));
  }
  const QJsonValue below = schema["exclusiveMinimum"];
  return below.isUndefined() ? QString() : QStringLiteral(" greater than %1").arg(ValueText(below));
}

QString ArrayText(const QJsonObject& schema) {
  const int least = schema["minItems"].toInt();
  const QJsonObject elements = schema["items"].toObject();
  // What a reference leads to are the levels of the file, all of them objects.
  const QJsonValue type = elements.contains(QStringLiteral("$ref")) ? QStringLiteral("object") : elements["type"];
  const QString several = TypeText(type, &TypeWords::several);
  return QStringLiteral("an array") + (several.isEmpty() ? QString() : QStringLiteral(" of ") + several) +
         (least > 0 ? QStringLiteral(" with at least %1 %2")
                          .arg(least)
                          .arg(least == 1 ? QStringLiteral("entry") : QStringLiteral("entries"))
                    : QString());
}

}  // namespace

QString Expectation(const QJsonObject& schema) {
  if (schema.contains(QStringLiteral("title"))) {
    return schema["title"].toString();
  }
  if (schema.contains(QStringLiteral("enum"))) {
    return EnumText(schema["enum"].toArray());
  }
  if (schema["type"] == QStringLiteral("array")) {
    return ArrayText(schema);
  }
  const int longest = schema["maxLength"].toInt();
  return TypeText(schema["type"], &TypeWords::one) + LimitText(schema) +
         (longest > 0 ? QStringLiteral(" of at most %1 characters").arg(longest) : QString());
}

}  // namespace korvax
