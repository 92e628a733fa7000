#include "server/HardwareSetup.h"

#include "boards/DigitizerBoard.h"
#include "server/BoardPlugins.h"

#include <QJsonObject>
#include <QtDebug>

namespace {

void LogEntry(const QJsonObject& entry) {
  qInfo() << "Connecting to board: " << entry["id"].toString();
  qInfo() << "\tName:" << entry["board_name"].toString();
  qInfo() << "\tBoard Type:" << entry["board_type"].toString();
  qInfo() << "\tConnection address:" << entry["board_connection_string"].toString();
}

std::unique_ptr<DigitizerBoard> NewBoard(const QJsonObject& entry, const QLibrary& library) {
  auto board = std::make_unique<DigitizerBoard>(BoardPlugins::LookupIn(library));
  board->id = entry["id"].toInt();
  board->type = entry["board_type"].toString();
  board->family = entry["board_family"].toString();
  board->pluginName = entry["board_plugin"].toString();
  board->name = entry["board_name"].toString();
  return board;
}

bool OpenBoard(DigitizerBoard& board, const QString& address) {
  const qint32 status = board.Open(address);
  qInfo() << "Connection status: " << status;
  if (status == 0) {
    return true;
  }
  qInfo() << "HARDWARE device: " << address << " is reporting isssues in connection procedure";
  qInfo() << "KORVAX Server can not start without all board correctly loaded";
  qInfo() << "Check connection or disable it from configuration file";
  return false;
}

std::optional<int> ConnectBoard(const QJsonObject& entry, const BoardPlugins& plugins, BoardList& boards) {
  LogEntry(entry);
  const QLibrary* const library = plugins.Find(entry["board_plugin"].toString());
  if (library == nullptr) {
    qInfo() << "Unable to locate a board plugin library for " << entry["board_family"].toString();
    return 0;
  }
  auto board = NewBoard(entry, *library);
  qInfo() << "Using " << BoardPlugins::BaseName(*library) << " for board " << board->name;
  if (!OpenBoard(*board, entry["board_connection_string"].toString())) {
    return 1;
  }
  board->ApplyConfigs(entry);
  board->LoadEndpoints(entry);
  board->LoadCommands(entry);
  boards.push_back(std::move(board));
  return std::nullopt;
}

}  // namespace

namespace HardwareSetup {

std::optional<int> ConnectBoards(const QJsonArray& hardware, const BoardPlugins& plugins, BoardList& boards) {
  for (const QJsonValue& value : hardware) {
    const QJsonObject entry = value.toObject();
    if (!entry["enable"].toBool()) {
      continue;
    }
    if (const std::optional<int> failure = ConnectBoard(entry, plugins, boards)) {
      return failure;
    }
  }
  return std::nullopt;
}

}  // namespace HardwareSetup
