#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringList>

namespace test {

/// A configuration that works: one board, bound by one source, and a spectrum of 8 channels of 1024 bins.
QJsonValue ValidConfiguration(const QString& storage, const QString& connection);

/// The value with one part replaced; an undefined replacement takes the part out. A path is made of keys and
/// positions, for example "Hardware/0/enable".
QJsonValue With(const QJsonValue& whole, const QString& path, const QJsonValue& replacement);
QJsonValue At(const QJsonValue& whole, const QString& path);

/// The paths of all parts of a value, without itself.
QStringList PathsOf(const QJsonValue& whole);

QByteArray ToText(const QJsonValue& value);

}  // namespace test
