#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

#include <vector>

namespace test {

/// Paths of all values of a document, those of objects and arrays, too; but not of the whole.
std::vector<QStringList> AllPaths(const QJsonValue& whole);

QJsonValue At(const QJsonValue& whole, const QStringList& path);

/// The document with another value at a path; an undefined one takes the member, or element, away.
QJsonObject With(const QJsonObject& whole, const QStringList& path, const QJsonValue& value);

/// The line, from 1, on which the value at a path stands in Text.
int LineOf(const QJsonObject& whole, const QStringList& path);

/// With each member and element on a line of its own.
QByteArray Text(const QJsonObject& whole);

}  // namespace test
