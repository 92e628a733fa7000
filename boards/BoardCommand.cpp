#include "boards/BoardCommand.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<const char*, CommandType>, 5> TypeTexts{{
    {"config", CommandType::Config},
    {"config_all", CommandType::ConfigAll},
    {"start", CommandType::Start},
    {"stop", CommandType::Stop},
    {"reset", CommandType::Reset},
}};

CommandType TypeOf(const QString& text) {
  const auto found = std::find_if(TypeTexts.begin(), TypeTexts.end(),
                                  [&text](const auto& entry) { return text == QLatin1String(entry.first); });
  return found == TypeTexts.end() ? CommandType::Unknown : found->second;
}

}  // namespace

BoardCommand BoardCommand::FromJson(const QJsonObject& entry) {
  BoardCommand command;
  command.name = entry["name"].toString();
  command.text = entry["text"].toString();
  command.path = entry["path"].toString();
  command.type = TypeOf(entry["command_type"].toString());
  command.displayUi = entry["display_ui"].toString() == QLatin1String("true");
  command.loop = entry["loop"].toString() == QLatin1String("true");
  return command;
}
