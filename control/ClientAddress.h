#pragma once

#include <QHostAddress>
#include <QString>

namespace korvax {

/// As people write it: without the prefix that a socket of both families gives to addresses of the fourth version.
QString ClientAddress(const QHostAddress& address);

}  // namespace korvax
