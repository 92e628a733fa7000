#pragma once

#include <QJsonObject>
#include <QJsonValue>

#include <memory>

namespace korvax {

/// A JSON Schema, draft 7, whose references, if it has any, lead to itself. For one thread at a time.
class JsonSchema {
public:
  /// Throws std::runtime_error when `schema` is none.
  explicit JsonSchema(const QJsonObject& schema);
  ~JsonSchema();
  JsonSchema(JsonSchema&&) noexcept;

  bool Accepts(const QJsonValue& value) const;

private:
  struct Parts;

  std::unique_ptr<Parts> parts_;
};

}  // namespace korvax
