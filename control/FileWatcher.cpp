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

}  // namespace

FileWatcher::FileWatcher(const BoardList& boards, QObject* parent)
    : QFileSystemWatcher(parent), boards_(Pointers(boards)) {
  connect(&watched_, &QFileSystemWatcher::fileChanged, this, &FileWatcher::FollowReplacement);
  connect(&watched_, &QFileSystemWatcher::fileChanged, this, &FileWatcher::fileChanged);
  connect(&watched_, &QFileSystemWatcher::directoryChanged, this, &FileWatcher::LookForMissing);
}

bool FileWatcher::addPath(const QString& path) {
  inodes_[path] = std::nullopt;
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
void FileWatcher::FollowReplacement(const QString& path) {
  if (!IsFollowed(path) || InodeOf(path) != inodes_[path]) {
    Follow(path);
  }
}

void FileWatcher::LookForMissing() {
  for (const auto& [path, inode] : inodes_) {
    if (!IsFollowed(path) && Follow(path)) {
      fileChanged(path);
    }
  }
}

bool FileWatcher::Follow(const QString& path) {
  watched_.removePath(path);
  inodes_[path] = InodeOf(path);
  if (!watched_.addPath(path)) {
    watched_.addPath(QFileInfo(path).absolutePath());
    inodes_[path] = InodeOf(path);
    if (!watched_.addPath(path)) {  // it may have come meanwhile, before its folder was watched
      return false;
    }
  }
  const bool nothingMissing =
      std::all_of(inodes_.begin(), inodes_.end(), [this](const auto& entry) { return IsFollowed(entry.first); });
  if (nothingMissing && !watched_.directories().isEmpty()) {
    watched_.removePaths(watched_.directories());
  }
  return true;
}

std::optional<FileWatcher::Inode> FileWatcher::InodeOf(const QString& path) {
  struct stat status {};
  if (stat(QFile::encodeName(path).constData(), &status) != 0) {
    return std::nullopt;
  }
  return Inode{status.st_dev, status.st_ino};
}
