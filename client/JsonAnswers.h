#pragma once

#include "client/Read.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace korvax::client {

/// `object` as the text of a query.
QString QueryText(const QJsonObject& object);

/// The query {"args":[argument]}, as blocks with a full path read it.
QString ArgumentQuery(const QJsonObject& argument);

Read<QJsonDocument> ReadJson(const QString& answer);

/// An answer that is one array.
Read<QJsonArray> ReadArray(const QString& answer);

/// The one object of an answer such as [{"response": true}].
Read<QJsonObject> ReadResponse(const QString& answer);

/// Empty when the answer says that a command was obeyed, otherwise what is wrong with it.
QString ObedienceFault(const QString& answer);

}  // namespace korvax::client
