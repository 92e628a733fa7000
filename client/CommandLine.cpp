#include "client/CommandLine.h"

#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <algorithm>

namespace korvax::client {

namespace {

/// The options that every command takes, as the parser writes them.
struct Connection {
  std::string host = "127.0.0.1";
  quint16 port = 51234;
  double timeout = 5;
};

void AddConnection(CLI::App& app, Connection& words) {
  app.add_option("--host", words.host, "Where the server runs (127.0.0.1)")->option_text("NAME");
  app.add_option("--port", words.port, "Its port (51234)")->check(CLI::Range(1, 65535))->option_text("N");
  app.add_option("--timeout", words.timeout, "To wait for the connection, and for each answer (5)")
      ->check(Seconds(0.001))
      ->option_text("SECONDS");
}

Commands AddCommands(CLI::App& app) {
  Commands commands;
  AddBlockCommands(app, commands);
  AddViewCommands(app, commands);
  AddRunCommands(app, commands);
  AddHvCommand(app, commands);
  AddLedgerCommand(app, commands);
  AddFilesCommands(app, commands);
  AddCheckCommand(app, commands);
  return commands;
}

/// The parsers of the commands that were given, from the program itself down: to "spectrum", or "run", "start".
std::vector<const CLI::App*> Given(const CLI::App& app) {
  std::vector<const CLI::App*> given{&app};
  for (const CLI::App* command : app.get_subcommands({})) {
    if (command->parsed()) {
      const std::vector<const CLI::App*> rest = Given(*command);
      given.insert(given.end(), rest.begin(), rest.end());
      break;
    }
  }
  return given;
}

Ending Refusal(const CLI::App& app, const QString& what) {
  QString commands;
  for (const CLI::App* command : Given(app)) {
    commands += Text(command->get_name()) + QLatin1Char(' ');
  }
  return {ExitCode::Usage, QStringLiteral("%1\nSee %2--help.").arg(what, commands)};
}

/// The parser's own words, but for a wrong command, which they don't name.
QString Fault(const CLI::App& app, const CLI::ParseError& error) {
  const bool needsCommand = !Given(app).back()->get_subcommands({}).empty();
  const std::vector<std::string> rest = app.remaining(true);
  if (needsCommand && !rest.empty()) {
    return QStringLiteral("\"%1\" is not a command.").arg(Text(rest.front()));
  }
  if (needsCommand && dynamic_cast<const CLI::RequiredError*>(&error)) {
    return QStringLiteral("A command is missing.");
  }
  return QString::fromUtf8(error.what());
}

/// Whether a connection to `server` can be tried at all.
bool HasHost(const ServerAddress& server) {
  return !QueryTarget(QStringLiteral("any")).Url(server).host().isEmpty();
}

}  // namespace

std::variant<Invocation, Ending> ParseCommandLine(const std::vector<std::string>& words) {
  Connection connection;
  CLI::App app(help::description, "korvaxctl");
  app.set_version_flag("--version", std::string("korvaxctl 1.0"));
  app.require_subcommand(1);
  app.fallthrough();
  app.footer(help::footer);
  AddConnection(app, connection);
  const Commands commands = AddCommands(app);
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::CallForVersion& version) {
    return Ending{ExitCode::Ok, QString::fromUtf8(version.what())};
  } catch (const CLI::Success&) {
    return Ending{ExitCode::Ok, Text(app.help()).trimmed()};
  } catch (const CLI::ParseError& error) {
    return Refusal(app, Fault(app, error));
  }
  const ServerAddress server{Text(connection.host), connection.port, Milliseconds(connection.timeout)};
  if (!HasHost(server)) {
    return Refusal(app, QStringLiteral("--host \"%1\" is not a host name or address.").arg(server.host));
  }
  const auto parsed = std::ranges::find_if(commands, [](const Command& each) { return each.parser->parsed(); });
  Read<Request> request = parsed->request();
  if (!request.value) {
    return Refusal(app, request.fault);
  }
  return Invocation{server, std::move(*request.value)};
}

}  // namespace korvax::client
