#pragma once

#include "configuration/SchemaNode.h"

#include <QByteArray>

namespace korvax {

/// The JSON Schema of the configuration file, as it ships with the program.
QByteArray ConfigurationSchemaText();

/// The same, to walk a configuration beside it. Made at the first call.
const SchemaNode& ConfigurationSchema();

}  // namespace korvax
