#include "control/FileWatcher.h"

#include "boards/DigitizerBoard.h"
#include "framework/JsonFile.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QtDebug>

#include <sys/stat.h>
#include <algorithm>

namespace {

std::vector<DigitizerBoard*> Pointers(const BoardList& boards) {
  std::vector<DigitizerBoard*> pointers;
  for (const auto& board : boards) {
    pointers.push_back(board.get());
  }
  return pointers;
}

std::optional<std::pair<dev_t, ino_t>> InodeOf(const QString& path) {
  struct stat status {};
  if (stat(QFile::encodeName(path).constData(), &status) != 0) {
    return std::nullopt;
  }
  return std::pair{status.st_dev, status.st_ino};
}

}  // namespace

FileWatcher::FileWatcher(const BoardList& boards, QObject* parent)
    : QFileSystemWatcher(parent), boards_(Pointers(boards)) {
  connect(&watched_, &QFileSystemWatcher::fileChanged, this, &FileWatcher::OnFileEvent);
  connect(&watched_, &QFileSystemWatcher::directoryChanged, this, &FileWatcher::LookForMissing);
}

bool FileWatcher::addPath(const QString& path) {
  return Follow(path);
}

void FileWatcher::fileChanged(const QString& path) {
  const QJsonArray hardware = korvax::ReadJsonFile(path).object()["Hardware"].toArray();
  for (const QJsonValue& value : hardware) {
    const QJsonObject entry = value.toObject();
    for (DigitizerBoard* const board : boards_) {
      if (board->name == entry["board_name"].toString()) {
        qInfo() << " ---- RECONFIG BOARD: " << board->name << " ----";
        board->ApplyConfigs(entry);
        board->ConfigureBoard();
      }
    }
  }
}

// The system watches the file, not its name: one that was renamed into place isn't watched yet.
void FileWatcher::OnFileEvent(const QString& path) {
  const bool isTheSame = IsFollowed(path) && InodeOf(path) == followed_[path].inode;
  if (isTheSame || Follow(path)) {
    fileChanged(path);
  }
}

void FileWatcher::LookForMissing() {
  for (const auto& [path, followed] : followed_) {
    if (!IsFollowed(path) && Follow(path)) {
      fileChanged(path);
    }
  }
}

bool FileWatcher::Follow(const QString& path) {
  watched_.removePath(path);
  if (!Watch(path)) {
    watched_.addPath(QFileInfo(path).absolutePath());
    if (!followed_[path].folder.isEmpty()) {
      watched_.addPath(followed_[path].folder);
    }
    if (!Watch(path)) {  // it may have come meanwhile, before its folder was watched
      return false;
    }
  }
  StopWatchingFolders();
  return true;
}

bool FileWatcher::Watch(const QString& path) {
  Followed& followed = followed_[path];
  const QFileInfo file(path);
  followed.inode = InodeOf(path);
  // Qt would log a line for a file that can't be read, and take a folder of that name for the file.
  if (!file.isFile() || !file.isReadable() || !watched_.addPath(path)) {
    return false;
  }
  followed.folder = QFileInfo(file.canonicalFilePath()).absolutePath();
  return true;
}

void FileWatcher::StopWatchingFolders() {
  const bool nothingMissing = std::all_of(followed_.begin(), followed_.end(),
                                          [this](const auto& entry) { return IsFollowed(entry.first); });
  if (nothingMissing && !watched_.directories().isEmpty()) {
    watched_.removePaths(watched_.directories());
  }
}
