#pragma once

#include "client/Read.h"
#include "client/Requests.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace korvax::client {

/// A command as the parser knows it, and what makes a request of its words once they are read: a fault says
/// what no single option can see.
struct Command {
  const CLI::App* parser;
  std::function<Read<Request>()> request;
};

using Commands = std::vector<Command>;

/// Each adds a group of commands, with their options and help, to the parser and to the list.
void AddBlockCommands(CLI::App& app, Commands& commands);
void AddViewCommands(CLI::App& app, Commands& commands);
void AddRunCommands(CLI::App& app, Commands& commands);
void AddHvCommand(CLI::App& app, Commands& commands);
void AddLedgerCommand(CLI::App& app, Commands& commands);
void AddFilesCommands(CLI::App& app, Commands& commands);
void AddCheckCommand(CLI::App& app, Commands& commands);

/// Takes a number of seconds from `least` to a day.
CLI::Validator Seconds(double least);

/// A word that must be there and not be empty.
CLI::Option* AddWord(CLI::App& command, const char* name, const char* description, std::string& value);

/// The flag --json, which asks for the answer itself.
void AddJson(CLI::App& command, bool& json);

std::chrono::milliseconds Milliseconds(double seconds);

QString Text(const std::string& utf8);

}  // namespace korvax::client
