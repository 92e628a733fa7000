#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringList>

namespace korvax {

/// A text of the file as it may be shown to a person: in quotes, escaped as in JSON, harmless to a terminal, and
/// with "…" where it is cut off.
QString Quoted(const QString& text);

/// A value of the file, for "found …": scalars as they stand, "an object", "an array", and "nothing" for one that
/// isn't there.
QString ValueText(const QJsonValue& value);

/// "expected …; found …"
QString Difference(const QString& expected, const QString& found);

/// The one of `candidates` that `text` was probably meant to be; empty when none is near,
/// and when there are more than 100.
QString NearestText(const QString& text, const QStringList& candidates);

/// " (did you mean "…"?)", or nothing when none of `candidates` is near.
QString Suggestion(const QString& text, const QStringList& candidates);

}  // namespace korvax
