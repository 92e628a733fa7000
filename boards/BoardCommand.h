#pragma once

#include <QJsonObject>
#include <QString>

enum class CommandType : int { Config = 0, ConfigAll = 1, Start = 2, Stop = 3, Reset = 4, Unknown = 5 };

/// One command that a board understands, from the configuration's "commands".
struct BoardCommand {
  QString name;
  QString text;  ///< label
  QString path;  ///< query handed to DigitizerBoard::SendCommand
  CommandType type = CommandType::Unknown;
  bool displayUi = false;  ///< true only for the text "true"; a JSON boolean reads as false
  bool loop = false;       ///< same rule
  bool attached = false;   ///< an endpoint of the command's "endpoint_type" exists

  static BoardCommand FromJson(const QJsonObject& entry);
};
