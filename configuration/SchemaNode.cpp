#include "configuration/SchemaNode.h"

#include "configuration/Expectation.h"

#include <QJsonArray>

#include <initializer_list>

namespace korvax {

namespace {

QJsonObject Resolved(const QJsonObject& schema, const QJsonObject& definitions) {
  const QString reference = schema["$ref"].toString();
  return reference.isEmpty() ? schema : definitions[reference.section(QLatin1Char('/'), -1)].toObject();
}

QJsonObject Only(const QJsonObject& schema, std::initializer_list<const char*> keywords) {
  QJsonObject part;
  for (const char* keyword : keywords) {
    const QString key = QLatin1String(keyword);
    if (schema.contains(key)) {
      part.insert(key, schema[key]);
    }
  }
  return part;
}

QStringList Texts(const QJsonValue& array) {
  QStringList texts;
  for (const QJsonValue& value : array.toArray()) {
    if (value.isString()) {
      texts << value.toString();
    }
  }
  return texts;
}

}  // namespace

SchemaNode::SchemaNode(const QJsonObject& schema, const QJsonObject& definitions)
    : type_(Only(schema, {"type"})),
      value_(Only(schema, {"enum", "minimum", "maximum", "exclusiveMinimum", "minItems", "maxItems", "minLength",
                           "maxLength", "pattern"})),
      expected_(Expectation(schema)),
      allowedTexts_(Texts(schema["enum"])),
      default_(schema["default"]),
      warnings_(Texts(schema["x-warnings"])),
      required_(Texts(schema["required"])) {
  AddMembers(schema, definitions);
  AddAdditions(schema, definitions);
}

void SchemaNode::AddMembers(const QJsonObject& schema, const QJsonObject& definitions) {
  const QJsonObject members = schema["properties"].toObject();
  for (auto member = members.begin(); member != members.end(); ++member) {
    members_.insert(member.key(),
                    std::make_shared<SchemaNode>(Resolved(member.value().toObject(), definitions), definitions));
  }
  if (schema.contains(QStringLiteral("items"))) {
    elements_ = std::make_shared<SchemaNode>(Resolved(schema["items"].toObject(), definitions), definitions);
  }
}

void SchemaNode::AddAdditions(const QJsonObject& schema, const QJsonObject& definitions) {
  for (const QJsonValue& value : schema["allOf"].toArray()) {
    const QJsonObject part = value.toObject();
    const bool isConditional = part.contains(QStringLiteral("if"));
    const QJsonObject added = Resolved(isConditional ? part["then"].toObject() : part, definitions);
    additions_.push_back({isConditional ? std::optional<JsonSchema>(part["if"].toObject()) : std::nullopt,
                          std::make_shared<SchemaNode>(added, definitions)});
  }
}

Verdict SchemaNode::Judge(const QJsonValue& value) const {
  if (!type_.Accepts(value)) {
    return Verdict::WrongType;
  }
  return value_.Accepts(value) ? Verdict::Right : Verdict::WrongValue;
}

std::vector<const SchemaNode*> SchemaNode::AppliedTo(const QJsonValue& value) const {
  std::vector<const SchemaNode*> nodes{this};
  for (const Addition& addition : additions_) {
    if (!addition.condition || addition.condition->Accepts(value)) {
      const auto more = addition.node->AppliedTo(value);
      nodes.insert(nodes.end(), more.begin(), more.end());
    }
  }
  return nodes;
}

}  // namespace korvax
