#include "boards/BoardCommand.h"

#include "boards/TextCode.h"

namespace {

constexpr std::array<korvax::TextCode<CommandType>, 5> TypeTexts{{
    {"config", CommandType::Config},
    {"config_all", CommandType::ConfigAll},
    {"start", CommandType::Start},
    {"stop", CommandType::Stop},
    {"reset", CommandType::Reset},
}};

}  // namespace

BoardCommand BoardCommand::FromJson(const QJsonObject& entry) {
  BoardCommand command;
  command.name = entry["name"].toString();
  command.text = entry["text"].toString();
  command.path = entry["path"].toString();
  command.type = korvax::CodeOf(entry["command_type"].toString(), TypeTexts, CommandType::Unknown);
  command.displayUi = entry["display_ui"].toString() == QLatin1String("true");
  command.loop = entry["loop"].toString() == QLatin1String("true");
  return command;
}
