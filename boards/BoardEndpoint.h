#pragma once

#include "boards/BoardCommand.h"

#include <QJsonObject>
#include <QString>

#include <vector>

enum class EndpointType : int { EnergySciU32 = 0, Other = 1 };

/// One data endpoint of a board, from the configuration's "endpoints", and the commands attached to it.
struct BoardEndpoint {
  QString name;
  QString text;  ///< label
  QString path;  ///< kept for clients; reads go by the source's "pin" text
  bool enabled = false;
  EndpointType type = EndpointType::Other;

  std::vector<BoardCommand> startCommands;  ///< in the order of the configuration, like all four
  std::vector<BoardCommand> stopCommands;
  std::vector<BoardCommand> configCommands;
  std::vector<BoardCommand> resetCommands;

  static BoardEndpoint FromJson(const QJsonObject& entry);

  /// Appends the command to the list of its type; types without a list go nowhere.
  void Attach(const BoardCommand& command);
};
