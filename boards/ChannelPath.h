#pragma once

#include <QString>

namespace korvax {

/// The path of one channel's copy of a parameter: every backslash becomes "\Channel<channel>\".
inline QString ChannelPath(QString path, int channel) {
  return path.replace(QLatin1Char('\\'),
                      QLatin1String("\\Channel") + QString::number(channel) + QLatin1Char('\\'));
}

}  // namespace korvax
