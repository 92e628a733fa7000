#pragma once

#include <QString>

#include <vector>

namespace korvax::client {

/// Whether a name stands before another where people look for it: x_2 before x_10.
bool NaturallyBefore(const QString& left, const QString& right);

/// The run files in a folder, by their names' endings, in natural order; folders in it are left alone. Of any
/// other path the path itself. An empty list: a folder without run files.
std::vector<QString> RunFilePaths(const QString& path);

}  // namespace korvax::client
