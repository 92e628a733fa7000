#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace korvax {

/// The value that a path leads to; undefined where there is none. A path's steps are keys, and numbers of elements
/// from 0 as texts.
QJsonValue ValueAt(const QJsonObject& configuration, const QStringList& path);

/// A path in words that a person finds in the file: `processing[0] "main" block "spectrum0" key "bin_number"`.
QString PlaceText(const QJsonObject& configuration, const QStringList& path);

}  // namespace korvax
