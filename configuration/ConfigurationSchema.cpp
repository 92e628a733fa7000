#include "configuration/ConfigurationSchema.h"

#include <QFile>
#include <QJsonDocument>

#include <stdexcept>

// In a static library nobody else does this; it has to stand outside of namespaces.
static void LoadResource() {
  Q_INIT_RESOURCE(configuration);
}

namespace korvax {

QByteArray ConfigurationSchemaText() {
  LoadResource();
  QFile file(QStringLiteral(":/korvax/korvax-configuration.schema.json"));
  if (!file.open(QIODevice::ReadOnly)) {
    throw std::logic_error("the schema is missing in the program");
  }
  return file.readAll();
}

const SchemaNode& ConfigurationSchema() {
  static const QJsonObject text = QJsonDocument::fromJson(ConfigurationSchemaText()).object();
  static const SchemaNode schema(text, text["definitions"].toObject());
  return schema;
}

}  // namespace korvax
