#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <memory>

namespace korvax::client {

namespace {

struct Words {
  std::vector<std::string> paths;
  std::string output;
};

FilesRequest ToFiles(FilesAction action, const Words& words) {
  FilesRequest request{action, {}, Text(words.output)};
  for (const std::string& path : words.paths) {
    request.paths.push_back(Text(path));
  }
  return request;
}

void AddAction(CLI::App& group, Commands& commands, FilesAction action, const char* name,
               const char* description) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = group.add_subcommand(name, description);
  command->add_option("PATH", words->paths, "Run files, or folders of them")->required()->option_text("...");
  if (action == FilesAction::Csv) {
    command->add_option("--output", words->output, "File to create (standard output)")->option_text("FILE");
  }
  command->footer(help::filesFooter);
  commands.push_back({command, [words, action] { return Read<Request>{ToFiles(action, *words), {}}; }});
}

void AddVerify(CLI::App& group, Commands& commands) {
  const auto folders = std::make_shared<std::vector<std::string>>();
  CLI::App* command = group.add_subcommand("verify", "Compare runs with what the server noted of them");
  command->add_option("FOLDER", *folders, "Folders of runs")->required()->option_text("...");
  command->footer(help::verifyFooter);
  commands.push_back({command, [folders] {
                        VerifyRequest request;
                        for (const std::string& folder : *folders) {
                          request.folders.push_back(Text(folder));
                        }
                        return Read<Request>{request, {}};
                      }});
}

void AddRecover(CLI::App& group, Commands& commands) {
  struct Files {
    std::string file;
    std::string output;
  };
  const auto files = std::make_shared<Files>();
  CLI::App* command = group.add_subcommand("recover", "Copy what is whole of a damaged run file");
  AddWord(*command, "FILE", "Run file to read", files->file);
  AddWord(*command, "OUT", "File to create", files->output);
  command->footer(help::recoverFooter);
  commands.push_back({command, [files] {
                        return Read<Request>{RecoverRequest{Text(files->file), Text(files->output)}, {}};
                      }});
}

}  // namespace

void AddFilesCommands(CLI::App& app, Commands& commands) {
  CLI::App* group =
      app.add_subcommand("files", "Read run files: summaries, checks, CSV, recovery; needs no server");
  group->require_subcommand(1);
  group->footer(help::filesFooter);
  AddAction(*group, commands, FilesAction::Summary, "summary", "Tell what run files hold");
  AddAction(*group, commands, FilesAction::Check, "check", "Tell whether run files are whole");
  AddAction(*group, commands, FilesAction::Csv, "csv", "Write run files of one kind as CSV");
  AddVerify(*group, commands);
  AddRecover(*group, commands);
}

}  // namespace korvax::client
