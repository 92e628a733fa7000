#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <memory>

namespace korvax::client {

void AddCheckCommand(CLI::App& app, Commands& commands) {
  struct Words {
    std::string file;
    bool schema = false;
  };
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("check", "Check a configuration file; needs no server");
  CLI::Option* file =
      command->add_option("FILE", words->file, "Configuration file of the server")->option_text(" ");
  command->add_flag("--schema", words->schema, "Print the JSON Schema of such files instead")->excludes(file);
  command->footer(help::checkFooter);
  commands.push_back({command, [words]() -> Read<Request> {
                        if (words->file.empty() && !words->schema) {
                          return {{}, QStringLiteral("FILE is required")};
                        }
                        return {CheckRequest{Text(words->file), words->schema}, {}};
                      }});
}

}  // namespace korvax::client
