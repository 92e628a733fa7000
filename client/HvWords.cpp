#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <map>
#include <memory>

namespace korvax::client {

void AddHvCommand(CLI::App& app, Commands& commands) {
  struct Words {
    std::string block;
    std::string action;
  };
  static const std::map<std::string, HvAction> actions{
      {"show", HvAction::Show}, {"on", HvAction::On}, {"off", HvAction::Off}};
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("hv", "Show a board's values, switch its high voltage on or off");
  AddWord(*command, "BLOCK", "Name of the high-voltage block, or Hardware/BOARD", words->block);
  AddWord(*command, "ACTION", "show, on or off", words->action)->check(CLI::IsMember(actions));
  command->footer(help::hvFooter);
  commands.push_back({command, [words] {
                        return Read<Request>{HvRequest{Text(words->block), actions.at(words->action)}, {}};
                      }});
}

}  // namespace korvax::client
