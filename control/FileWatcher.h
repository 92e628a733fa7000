#pragma once

#include "framework/ChainContext.h"

#include <QFileSystemWatcher>

#include <sys/types.h>
#include <map>
#include <optional>

/// Applies the configuration file's "Hardware" section to the connected boards each time the file changes, while
/// acquisition goes on. Changes are neither gathered nor compared with what stood there before: each one that the
/// system reports applies every entry again. A file that can't be read, or is no JSON, changes nothing. Main
/// thread.
class FileWatcher : public QFileSystemWatcher {
  Q_OBJECT

public:
  /// The boards outlive the watcher.
  explicit FileWatcher(const BoardList& boards, QObject* parent = nullptr);

  /// Follows the file at a path, also when another one takes its place or when it is gone for a while. False
  /// when there is none yet.
  bool addPath(const QString& path);

public slots:
  /// Hides the base's signal. Hands each entry of "Hardware" to the boards of its "board_name", in file order, and
  /// configures them.
  void fileChanged(const QString& path);

private:
  struct Followed {
    std::optional<std::pair<dev_t, ino_t>> inode;  // of the file that the system watches
    QString folder;                                // where it lay, behind symbolic links
  };

  void OnFileEvent(const QString& path);
  void LookForMissing();
  bool Follow(const QString& path);
  bool Watch(const QString& path);
  void StopWatchingFolders();
  bool IsFollowed(const QString& path) const { return watched_.files().contains(path); }

  const std::vector<DigitizerBoard*> boards_;
  QFileSystemWatcher watched_;  // the files, and the folders of those that are missing
  std::map<QString, Followed> followed_;
};
