#pragma once

#include "boards/VendorLibrary.h"

#include <QLibrary>

#include <memory>
#include <vector>

/// The board libraries found beside the executable. Loaded once and never unloaded: they stay until the process
/// ends, and must outlive every board. Main thread.
class BoardPlugins {
public:
  /// Loads every candidate of the folder, in the order the file system gives: a shared library whose name
  /// begins with "CAENDig2" or "libCAENDig2". One that fails to load is logged and left out.
  void LoadAll(const QString& folder);

  /// The loaded library whose base name equals the given one, letter case aside; of several the last. Null when
  /// there is none.
  const QLibrary* Find(const QString& baseName) const;

  std::size_t Count() const { return libraries_.size(); }

  /// The library's base name in lower case.
  static QString BaseName(const QLibrary& library);

  /// Finds functions in the library, which must outlive the result.
  static vendor::FunctionLookup LookupIn(const QLibrary& library);

private:
  void Load(const QString& folder, const QString& fileName);

  std::vector<std::unique_ptr<QLibrary>> libraries_;
};
