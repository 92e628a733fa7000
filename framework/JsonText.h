#pragma once

#include <QJsonDocument>
#include <QString>

namespace korvax {

/// For JSON from outside: what QJsonDocument::fromJson makes of it, without the memory that it loses. Of the
/// values of a key that stands more than once in an object, that function keeps one (the last, in an object of up
/// to 16 members) and never frees others that are objects or arrays: a client could so take all memory. Here they
/// stay in the object, under keys that nobody asks for: U+0000 and a number. Keys that begin with U+0000 are
/// renamed likewise.
QJsonDocument ParseJson(const QByteArray& text);

/// As one line without blanks.
QString CompactJson(const QJsonObject& object);

}  // namespace korvax
