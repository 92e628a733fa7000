#pragma once

#include "runfiles/FileType.h"

#include <functional>
#include <string_view>

namespace korvax::runfiles {

/// What a CSV file of this kind begins with; empty for all but rates.
std::string CsvHead(Kind kind);

/// The line of a record as the server writes it. Rates and samples have the general form with 6 digits.
void AppendCsv(const ListRecord& record, std::string& text);
void AppendCsv(const WaveRecord& record, std::string& text);
/// The last channel's rate out and count out don't stand in the line; they need not be in the record.
void AppendCsv(const RateRecord& record, std::string& text);

/// Hands the records of a file of any form to `write` as CSV, in pieces of many lines, without head; stops where
/// `write` gives false. Gives what is wrong with the file, if anything; its whole records are written then, too.
std::optional<FileFault> WriteCsv(const std::string& path, const FileType& type,
                                  const std::function<bool(std::string_view)>& write);

}  // namespace korvax::runfiles
