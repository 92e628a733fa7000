#pragma once

#include "configuration/JsonSchema.h"

#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace korvax {

/// One node of the configuration's schema with its references resolved, so that a file can be walked beside it and
/// each finding belongs to one key. Nodes don't refer to themselves.
class SchemaNode {
public:
  /// `definitions`: where references of the form "#/definitions/NAME" lead.
  SchemaNode(const QJsonObject& schema, const QJsonObject& definitions);

  /// Of the value by itself: without its members and elements.
  bool IsRight(const QJsonValue& value) const;

  /// The server goes on in a way that may be meant with this value, which isn't right, or without a required key.
  bool OnlyWarnsOf(const QJsonValue& value) const;
  bool OnlyWarnsOfMissing() const;

  /// What should stand there, as it follows on "expected": "an integer of at least 1".
  const QString& Expected() const { return expected_; }
  /// The texts that are allowed; empty when any are.
  const QStringList& AllowedTexts() const { return allowedTexts_; }
  /// What a missing value reads as; undefined when the schema doesn't say.
  const QJsonValue& Default() const { return default_; }

  const QStringList& RequiredKeys() const { return required_; }
  QStringList Keys() const { return members_.keys(); }
  /// Null for a key, or for elements, of which this node says nothing.
  const SchemaNode* Member(const QString& key) const { return members_.value(key).get(); }
  const SchemaNode* Elements() const { return elements_.get(); }

  /// This node and all others that apply to `value` beside it.
  std::vector<const SchemaNode*> AppliedTo(const QJsonValue& value) const;

private:
  struct Addition {
    std::optional<JsonSchema> condition;
    std::shared_ptr<const SchemaNode> node;
  };

  void AddMembers(const QJsonObject& schema, const QJsonObject& definitions);
  void AddAdditions(const QJsonObject& schema, const QJsonObject& definitions);

  JsonSchema type_;
  JsonSchema value_;
  std::optional<QRegularExpression> pattern_;
  std::optional<JsonSchema> warned_;
  QString expected_;
  QStringList allowedTexts_;
  QJsonValue default_;
  QStringList warnings_;
  QStringList required_;
  QMap<QString, std::shared_ptr<const SchemaNode>> members_;
  std::shared_ptr<const SchemaNode> elements_;
  std::vector<Addition> additions_;
};

}  // namespace korvax
