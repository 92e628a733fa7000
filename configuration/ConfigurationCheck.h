#pragma once

#include "configuration/Finding.h"

#include <QByteArray>
#include <QString>

#include <variant>

namespace korvax {

/// Larger files are not looked at: no configuration is.
inline constexpr qint64 LargestConfiguration = 4 << 20;

/// Checks the text of a configuration file without starting anything. Nothing in it is trusted.
CheckReport CheckConfiguration(const QByteArray& text);

/// As above, of a regular file of which no more than the above is read; or why it can't be read.
std::variant<CheckReport, QString> CheckConfigurationFile(const QString& path);

/// A finding as one line: FILE:LINE: error: …
QString FindingLine(const QString& file, const Finding& finding);

}  // namespace korvax
