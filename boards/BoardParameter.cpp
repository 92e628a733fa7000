#include "boards/BoardParameter.h"

#include "boards/TextCode.h"

#include <QJsonArray>

namespace {

constexpr std::array<korvax::TextCode<ParameterValueType>, 7> TypeTexts{{
    {"string_array", ParameterValueType::StringArray},
    {"list", ParameterValueType::List},
    {"u32", ParameterValueType::U32},
    {"boolean", ParameterValueType::Boolean},
    {"bool_array", ParameterValueType::BoolArray},
    {"list_array", ParameterValueType::ListArray},
    {"u32_array", ParameterValueType::U32Array},
}};

// Element i of the array is bit i of the mask, so the texts are joined from the last to the first.
QString BitMask(const QJsonArray& values) {
  QString binary;
  for (int i = values.size() - 1; i >= 0; --i) {
    binary += values[i].toString();
  }
  return QString::number(binary.toULongLong(nullptr, 2));
}

QStringList ArrayValues(const QJsonArray& values) {
  QStringList texts;
  for (const QJsonValue& value : values) {
    switch (value.type()) {
      case QJsonValue::String:
        texts << value.toString();
        break;
      case QJsonValue::Double:
        texts << QString::number(value.toDouble(), 'g', 6);
        break;
      case QJsonValue::Bool:
        texts << (value.toBool() ? QStringLiteral("1") : QStringLiteral("0"));
        break;
      default:
        break;
    }
  }
  return texts;
}

}  // namespace

BoardParameter BoardParameter::FromJson(const QJsonObject& element) {
  BoardParameter parameter;
  parameter.name = element["name"].toString();
  parameter.path = element["path"].toString();
  parameter.writable = element["access"].toString() != QLatin1String("read_only");
  parameter.type = korvax::CodeOf(element["value_type"].toString(), TypeTexts, ParameterValueType::Unset);
  if (!parameter.writable) {
    return parameter;
  }
  switch (parameter.type) {
    case ParameterValueType::BoolArray:
      parameter.value = BitMask(element["values"].toArray());
      break;
    case ParameterValueType::StringArray:
    case ParameterValueType::ListArray:
    case ParameterValueType::U32Array:
      parameter.values = ArrayValues(element["values"].toArray());
      break;
    default:
      parameter.value = element["value"].toString();
      break;
  }
  parameter.directApply = element["direct_apply"].toBool();
  return parameter;
}
