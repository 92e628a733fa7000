#pragma once

#include <QJsonDocument>
#include <QString>
#include <QTemporaryDir>

namespace test {

/// A server installed for one test, below a temporary folder: bin/ with the executable and boards/, an empty
/// storage folder, and work/ to start in.
class Installation {
public:
  /// Takes a hard link or a copy of the executable: the server looks for boards beside its real place.
  explicit Installation(const QString& executable);

  QString Path(const QString& relative) const { return folder_.filePath(relative); }
  QString Executable() const;
  QString StoragePath() const { return Path(QStringLiteral("storage")); }
  QString WorkingFolder() const { return Path(QStringLiteral("work")); }
  QString ConfigurationPath() const { return Path(QStringLiteral("configuration.json")); }
  QString BoardsFolder() const { return Path(QStringLiteral("bin/boards")); }

  /// Puts a file into boards/ under the given name.
  void AddBoardLibrary(const QString& file, const QString& name) const;

  void WriteConfiguration(const QByteArray& text) const { Write(ConfigurationPath(), text); }
  static void Write(const QString& path, const QByteArray& content);

private:
  QTemporaryDir folder_;
};

}  // namespace test
