#pragma once

#include "configuration/ConfigurationCheck.h"

#include <QJsonObject>
#include <QStringList>

#include <string>

namespace test {

/// A file of the project, by its path from the project's root. Fails the test when it can't be read.
QByteArray ProjectFile(const QString& path);
QJsonObject ProjectConfiguration(const QString& path);

/// What a check of the whole finds, as "LINE: error: …", and below it what only the walk along the schema finds.
QStringList FindingsIn(const QByteArray& text);
QStringList SchemaFindingsIn(const QByteArray& text);

/// The findings on one line each, for comparisons that show the difference.
std::string Joined(const QStringList& lines);

}  // namespace test
