#pragma once

#include "configuration/FindingList.h"
#include "configuration/SchemaNode.h"

namespace korvax {

/// Goes through a configuration beside its schema and adds what the schema doesn't want: wrong types and values,
/// missing keys, and keys of which it says nothing.
class SchemaWalk {
public:
  explicit SchemaWalk(FindingList& findings) : findings_(findings) {}

  void Check(const QJsonObject& configuration, const SchemaNode& schema);

private:
  using Nodes = std::vector<const SchemaNode*>;

  void CheckValue(const QJsonValue& value, const Nodes& nodes);
  bool IsRight(const QJsonValue& value, const SchemaNode& node);
  void CheckMembers(const QJsonObject& object, const Nodes& nodes);
  void CheckRequired(const QJsonObject& object, const SchemaNode& node, const Nodes& nodes);
  void CheckElements(const QJsonArray& array, const Nodes& nodes);

  FindingList& findings_;
  QStringList path_;
};

}  // namespace korvax
