#include "configuration/JsonSchema.h"

#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

namespace korvax {

struct JsonSchema::Parts {
  valijson::Schema schema;
  valijson::Validator validator;  // keeps the patterns that it has compiled
};

JsonSchema::JsonSchema(const QJsonObject& schema) : parts_(std::make_unique<Parts>()) {
  const QJsonValue value(schema);
  valijson::SchemaParser().populateSchema(valijson::adapters::QtJsonAdapter(value), parts_->schema);
}

JsonSchema::~JsonSchema() = default;
JsonSchema::JsonSchema(JsonSchema&&) noexcept = default;

bool JsonSchema::Accepts(const QJsonValue& value) const {
  return parts_->validator.validate(parts_->schema, valijson::adapters::QtJsonAdapter(value), nullptr);
}

}  // namespace korvax
