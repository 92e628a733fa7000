#pragma once

#include <QString>

namespace korvax::answers {

/// The answer of every command that has nothing else to say.
inline QString Success() {
  return QStringLiteral("[{\"response\": true}]");
}

/// The answer to a command for a source that isn't there.
inline QString UnknownEndpoint() {
  return QStringLiteral("[{\"response\": \"Unknown endpoint\"}]");
}

}  // namespace korvax::answers
