#pragma once

#include <QJsonDocument>

namespace korvax {

/// The JSON text of a file, read whole; null when there is no such regular file, it can't be
/// read, or isn't JSON.
QJsonDocument ReadJsonFile(const QString& path);

}  // namespace korvax
