#include "configuration/SchemaWalk.h"

#include "configuration/Words.h"

#include <QJsonArray>

namespace korvax {

namespace {

std::vector<const SchemaNode*> MembersOf(const std::vector<const SchemaNode*>& nodes, const QString& key) {
  std::vector<const SchemaNode*> members;
  for (const SchemaNode* node : nodes) {
    if (const SchemaNode* const member = node->Member(key)) {
      members.push_back(member);
    }
  }
  return members;
}

QStringList KeysOf(const std::vector<const SchemaNode*>& nodes) {
  QStringList keys;
  for (const SchemaNode* node : nodes) {
    keys << node->Keys();
  }
  return keys;
}

// The last one that has words: what applies to one type of block stands behind what applies to all.
QString ExpectedBy(const std::vector<const SchemaNode*>& nodes) {
  QString expected;
  for (const SchemaNode* node : nodes) {
    expected = node->Expected().isEmpty() ? expected : node->Expected();
  }
  return expected.isEmpty() ? QStringLiteral("a value") : expected;
}

Severity SeverityOf(bool onlyWarns) {
  return onlyWarns ? Severity::Warning : Severity::Error;
}

}  // namespace

void SchemaWalk::Check(const QJsonObject& configuration, const SchemaNode& schema) {
  CheckValue(configuration, {&schema});
}

void SchemaWalk::CheckValue(const QJsonValue& value, const Nodes& nodes) {
  Nodes applied;
  for (const SchemaNode* node : nodes) {
    const Nodes more = node->AppliedTo(value);
    applied.insert(applied.end(), more.begin(), more.end());
  }
  for (const SchemaNode* node : applied) {
    if (!IsRight(value, *node)) {
      return;
    }
  }
  if (value.isObject()) {
    CheckMembers(value.toObject(), applied);
  } else if (value.isArray()) {
    CheckElements(value.toArray(), applied);
  }
}

bool SchemaWalk::IsRight(const QJsonValue& value, const SchemaNode& node) {
  if (node.IsRight(value)) {
    return true;
  }
  const auto found = [&] { return ValueText(value) + Suggestion(value.toString(), node.AllowedTexts()); };
  findings_.Add(SeverityOf(node.OnlyWarnsOf(value)), path_, node.Expected(), found);
  return false;
}

void SchemaWalk::CheckMembers(const QJsonObject& object, const Nodes& nodes) {
  for (const SchemaNode* node : nodes) {
    CheckRequired(object, *node, nodes);
  }
  const QStringList keys = KeysOf(nodes);
  if (keys.isEmpty()) {
    return;  // whatever the members are, the schema says nothing of them
  }
  for (auto member = object.begin(); member != object.end(); ++member) {
    path_ << member.key();
    const Nodes known = MembersOf(nodes, member.key());
    if (known.empty()) {
      findings_.Warn(path_, QStringLiteral("a key that the server knows"),
                     [&] { return QStringLiteral("an unknown one") + Suggestion(member.key(), keys); });
    } else {
      CheckValue(member.value(), known);
    }
    path_.removeLast();
  }
}

void SchemaWalk::CheckRequired(const QJsonObject& object, const SchemaNode& node, const Nodes& nodes) {
  for (const QString& key : node.RequiredKeys()) {
    if (!object.contains(key)) {
      findings_.Add(SeverityOf(node.OnlyWarnsOfMissing()), path_ + QStringList{key},
                    ExpectedBy(MembersOf(nodes, key)), QStringLiteral("nothing"));
    }
  }
}

void SchemaWalk::CheckElements(const QJsonArray& array, const Nodes& nodes) {
  Nodes elements;
  for (const SchemaNode* node : nodes) {
    if (node->Elements() != nullptr) {
      elements.push_back(node->Elements());
    }
  }
  for (int i = 0; i < array.size(); ++i) {
    path_ << QString::number(i);
    CheckValue(array[i], elements);
    path_.removeLast();
  }
}

}  // namespace korvax
