#pragma once

#include "runfiles/FileSummary.h"

#include <QStringList>

namespace korvax::client {

/// "1 record", "2 records"
QString CountedRecords(quint64 count);

/// "good, 2 records", or what is wrong with the file.
QString Verdict(const runfiles::FileSummary& summary);

/// What a file holds, in lines of at most `width` characters where that can be: a table of figures, and for lists
/// one of channels, with bars.
QStringList SummaryLines(const QString& path, const runfiles::FileSummary& summary, int width);

}  // namespace korvax::client
