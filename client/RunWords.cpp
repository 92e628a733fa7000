#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <memory>

namespace korvax::client {

namespace {

struct Words {
  std::string id;
  bool force = false;
};

void AddAction(CLI::App& group, Commands& commands, RunAction action, const char* name, const char* description) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = group.add_subcommand(name, description);
  if (action == RunAction::Start) {
    const auto fault = [](const std::string& id) {
      return std::string(id.find('/') == std::string::npos ? "" : "a run is named by one folder, without \"/\"");
    };
    AddWord(*command, "ID", "What the run's folder is to be called", words->id)->check(CLI::Validator(fault, ""));
  }
  if (action != RunAction::Stop && action != RunAction::Info) {
    command->add_flag("--force", words->force, "Do it, whatever the dumpers are doing");
  }
  command->footer(help::runFooter);
  commands.push_back({command, [words, action] {
                        return Read<Request>{RunRequest{action, Text(words->id), words->force}, {}};
                      }});
}

}  // namespace

void AddRunCommands(CLI::App& app, Commands& commands) {
  CLI::App* group = app.add_subcommand("run", "Record: start, stop, pause and restart runs, and what is recorded");
  group->require_subcommand(1);
  group->footer(help::runFooter);
  AddAction(*group, commands, RunAction::Start, "start", "Start a run, from events of now on");
  AddAction(*group, commands, RunAction::Stop, "stop", "Stop the run");
  AddAction(*group, commands, RunAction::Pause, "pause", "Record nothing for a while");
  AddAction(*group, commands, RunAction::Restart, "restart", "Go on after a pause, in the same files");
  AddAction(*group, commands, RunAction::Info, "info", "Show what every dumper has recorded");
}

}  // namespace korvax::client
