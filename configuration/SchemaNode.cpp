#include "configuration/SchemaNode.h"

#include "configuration/Expectation.h"

#include <QJsonArray>

#include <initializer_list>
#include <utility>

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

std::optional<JsonSchema> Part(const QJsonObject& schema, const char* keyword) {
  const QJsonValue part = schema[QLatin1String(keyword)];
  return part.isObject() ? std::optional<JsonSchema>(part.toObject()) : std::nullopt;
}

// The validator's own patterns recurse once for each character, and texts of the file are of any length. Ours are
// always of whole texts.
std::optional<QRegularExpression> Pattern(const QJsonObject& schema) {
  const QString pattern = schema[QStringLiteral("pattern")].toString();
  return pattern.isEmpty() ? std::nullopt
                           : std::optional(QRegularExpression(QRegularExpression::anchoredPattern(pattern)));
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
                           "maxLength"})),
      pattern_(Pattern(schema)),
      warned_(Part(schema, "x-warned")),
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
    std::optional<JsonSchema> condition = Part(part, "if");
    const QJsonObject added = Resolved(condition ? part["then"].toObject() : part, definitions);
    additions_.push_back({std::move(condition), std::make_shared<SchemaNode>(added, definitions)});
  }
}

bool SchemaNode::IsRight(const QJsonValue& value) const {
  const bool fits = !pattern_ || !value.isString() || pattern_->match(value.toString()).hasMatch();
  return fits && type_.Accepts(value) && value_.Accepts(value);
}

bool SchemaNode::OnlyWarnsOf(const QJsonValue& value) const {
  const char* const kind = type_.Accepts(value) ? "value" : "type";
  return warnings_.contains(QLatin1String(kind)) || (warned_ && warned_->Accepts(value));
}

bool SchemaNode::OnlyWarnsOfMissing() const {
  return warnings_.contains(QLatin1String("required"));
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
