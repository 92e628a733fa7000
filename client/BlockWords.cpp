#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <array>
#include <memory>

namespace korvax::client {

namespace {

void AddQuery(CLI::App& app, Commands& commands) {
  struct Words {
    std::string target;
    std::string json;
  };
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("query", "Send any query to a block and print the answer");
  AddWord(*command, "TARGET", "Full path or name of the block", words->target);
  AddWord(*command, "JSON", "The query, a JSON object", words->json);
  command->footer(help::queryFooter);
  commands.push_back({command, [words] {
                        return Read<Request>{QueryRequest{Text(words->target), Text(words->json)}, {}};
                      }});
}

void AddBlocks(CLI::App& app, Commands& commands) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("blocks", "List the blocks that the configuration made, and their links");
  AddJson(*command, *json);
  command->footer(help::blocksFooter);
  commands.push_back({command, [json] { return Read<Request>{BlocksRequest{*json}, {}}; }});
}

struct SinkCommand {
  SinkAction action;
  const char* name;
  const char* description;
  const char* footer;
};

const std::array<SinkCommand, 4> sinkCommands{{
    {SinkAction::Start, "start", "Let a block count", help::startFooter},
    {SinkAction::Stop, "stop", "Let a block count no more", help::stopFooter},
    {SinkAction::Reset, "reset", "Set a block's counts to zero", help::resetFooter},
    {SinkAction::Status, "status", "Tell whether a block counts", help::statusFooter},
}};

void AddSink(CLI::App& app, Commands& commands, const SinkCommand& each) {
  const auto path = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand(each.name, each.description);
  AddWord(*command, "PATH", "Full path of the block", *path);
  command->footer(each.footer);
  commands.push_back({command, [path, action = each.action] {
                        return Read<Request>{SinkRequest{action, Text(*path)}, {}};
                      }});
}

}  // namespace

void AddBlockCommands(CLI::App& app, Commands& commands) {
  AddQuery(app, commands);
  AddBlocks(app, commands);
  for (const SinkCommand& each : sinkCommands) {
    AddSink(app, commands, each);
  }
}

}  // namespace korvax::client
