#include "server/BoardPlugins.h"

#include <QDir>
#include <QFileInfo>
#include <QtDebug>

namespace {

constexpr const char* LibraryFilter = "*.so";

bool IsCandidate(const QString& fileName) {
  return fileName.startsWith(QLatin1String("CAENDig2")) || fileName.startsWith(QLatin1String("libCAENDig2"));
}

}  // namespace

void BoardPlugins::LoadAll(const QString& folder) {
  const QStringList names = QDir(folder).entryList({QLatin1String(LibraryFilter)}, QDir::Files, QDir::Unsorted);
  for (const QString& name : names) {
    if (IsCandidate(name)) {
      Load(folder, name);
    }
  }
}

void BoardPlugins::Load(const QString& folder, const QString& fileName) {
  auto library = std::make_unique<QLibrary>(folder + QLatin1Char('/') + fileName);
  if (library->load()) {
    libraries_.push_back(std::move(library));
    return;
  }
  qInfo() << "Unable to load plugin: " << fileName;
  qInfo() << "Error:  " << library->errorString();
  qInfo() << "Execution terminated";
}

const QLibrary* BoardPlugins::Find(const QString& baseName) const {
  const QLibrary* found = nullptr;
  for (const auto& library : libraries_) {
    if (BaseName(*library) == baseName.toLower()) {
      found = library.get();
    }
  }
  return found;
}

QString BoardPlugins::BaseName(const QLibrary& library) {
  return QFileInfo(library.fileName()).baseName().toLower();
}

vendor::FunctionLookup BoardPlugins::LookupIn(const QLibrary& library) {
  // QLibrary::resolve isn't const, though it changes nothing in a library that is loaded.
  return [loaded = const_cast<QLibrary*>(&library)](const char* name) { return loaded->resolve(name); };
}
