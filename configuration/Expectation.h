#pragma once

#include <QJsonObject>
#include <QString>

namespace korvax {

/// What a node of a schema wants, as it follows on "expected": its title if it has one, else words for its type
/// and limits, such as "an integer of at least 1".
QString Expectation(const QJsonObject& schema);

}  // namespace korvax
