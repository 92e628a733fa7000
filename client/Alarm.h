#pragma once

#include <QString>

namespace korvax::client {

/// A text that is to be noticed: red or, without colours, behind a "!".
inline QString Alarm(const QString& text, bool coloured) {
  return coloured ? QStringLiteral("\x1b[31m%1\x1b[0m").arg(text) : QLatin1Char('!') + text;
}

}  // namespace korvax::client
