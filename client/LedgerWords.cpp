#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <memory>

namespace korvax::client {

void AddLedgerCommand(CLI::App& app, Commands& commands) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("ledger", "Tell of every block what became of its records");
  AddJson(*command, *json);
  command->footer(help::ledgerFooter);
  commands.push_back({command, [json] { return Read<Request>{LedgerRequest{*json}, {}}; }});
}

}  // namespace korvax::client
