#pragma once

#include <QJsonDocument>

namespace korvax {

/// The largest file that is read, far above any configuration. What is larger was put there by mistake, and must
/// not take the memory of a running acquisition.
inline constexpr qint64 LargestJsonFile = qint64{128} << 20;

/// The JSON text of a file, read whole; null when there is no such regular file, it can't be
/// read, is larger than that, or isn't JSON.
QJsonDocument ReadJsonFile(const QString& path);

}  // namespace korvax
