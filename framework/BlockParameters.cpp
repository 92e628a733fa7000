#include "framework/BlockParameters.h"

#include <QJsonArray>
#include <QJsonObject>

namespace korvax {

void ApplyParameters(const QJsonValue& block, std::initializer_list<ParameterRule> rules) {
  const QJsonArray parameters = block.toObject()["parameters"].toArray();
  for (const QJsonValue& parameter : parameters) {
    const QJsonObject entry = parameter.toObject();
    const QString name = entry["param_name"].toString();
    for (const ParameterRule& rule : rules) {
      if (name == rule.name) {
        rule.apply(entry["param_value"]);
      }
    }
  }
}

std::vector<qint32> Integers(const QJsonValue& value) {
  const QJsonArray elements = value.toArray();
  std::vector<qint32> integers;
  integers.reserve(static_cast<std::size_t>(elements.size()));
  for (const QJsonValue& element : elements) {
    integers.push_back(element.toInt());
  }
  return integers;
}

}  // namespace korvax
