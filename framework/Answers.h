#pragma once

#include <QString>

namespace korvax::answers {

/// The answer of every command that has nothing else to say.
inline QString Success() {
  return QStringLiteral("[{\"response\": true}]");
}

}  // namespace korvax::answers
