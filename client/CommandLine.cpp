#include "client/CommandLine.h"

#include "client/HelpTexts.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace korvax::client {

namespace {

constexpr double longestSeconds = 86400;

/// What the parser writes to, before it is checked as a whole.
struct Words {
  std::string host = "127.0.0.1";
  quint16 port = 51234;
  double timeout = 5;
  std::string target;
  std::string json;
  std::vector<int> channels{0};
  BinRange range;
  bool logarithmic = false;
  bool live = false;
  double interval = 1;
  std::optional<int> width;
  std::optional<int> height;
};

std::chrono::milliseconds Milliseconds(double seconds) {
  return std::chrono::milliseconds(std::max(1LL, std::llround(seconds * 1000)));
}

QString Text(const std::string& utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

void AddConnection(CLI::App& app, Words& words) {
  app.add_option("--host", words.host, "Where the server runs (127.0.0.1)")->option_text("NAME");
  app.add_option("--port", words.port, "Its port (51234)")->check(CLI::Range(1, 65535))->option_text("N");
  app.add_option("--timeout", words.timeout, "To wait for the connection, and for each answer (5)")
      ->check(CLI::Range(0.001, longestSeconds))
      ->option_text("SECONDS");
}

void AddTarget(CLI::App& command, const char* name, const char* description, std::string& value) {
  command.add_option(name, value, description)->required()->option_text(" ");
}

void AddQuery(CLI::App& app, Words& words) {
  CLI::App* command = app.add_subcommand("query", "Send any query to a block and print the answer");
  AddTarget(*command, "TARGET", "Full path or name of the block", words.target);
  AddTarget(*command, "JSON", "The query, a JSON object", words.json);
  command->footer(help::queryFooter);
}

void AddSpectrum(CLI::App& app, Words& words) {
  CLI::App* command = app.add_subcommand("spectrum", "Draw the histogram of one or more channels");
  const auto count = CLI::Range(0, std::numeric_limits<int>::max() - 1);
  AddTarget(*command, "PATH", "Full path of the block", words.target);
  command->add_option("--channel", words.channels, "Channels, such as 3 or 0,3,5 (0)")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(count)
      ->option_text("N[,N...]");
  command->add_flag("--live", words.live, "Draw again and again until Ctrl-C");
  command->add_flag("--log", words.logarithmic, "Logarithmic counts");
  command->add_option("--from", words.range.first, "First bin to show")->check(count)->option_text("BIN");
  command->add_option("--to", words.range.last, "Last bin to show")->check(count)->option_text("BIN");
  command->add_option("--width", words.width, "Columns of the picture (as the terminal)")
      ->check(CLI::Range(20, 10000))
      ->option_text("N");
  command->add_option("--height", words.height, "Lines of the picture (as the terminal)")
      ->check(CLI::Range(6, 1000))
      ->option_text("N");
  command->add_option("--interval", words.interval, "Between two pictures of --live (1)")
      ->check(CLI::Range(0.05, longestSeconds))
      ->option_text("SECONDS");
  command->footer(help::spectrumFooter);
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

void AddSinkCommands(CLI::App& app, Words& words) {
  for (const SinkCommand& each : sinkCommands) {
    CLI::App* command = app.add_subcommand(each.name, each.description);
    AddTarget(*command, "PATH", "Full path of the block", words.target);
    command->footer(each.footer);
  }
}

Ending Refusal(const CLI::App& app, const QString& what) {
  const std::vector<const CLI::App*> chosen = app.get_subcommands({});
  const auto parsed = std::ranges::find_if(chosen, [](const CLI::App* command) { return command->parsed(); });
  const QString command = parsed == chosen.end() ? QString() : Text((*parsed)->get_name()) + QLatin1Char(' ');
  return {ExitCode::Usage, QStringLiteral("%1\nSee korvaxctl %2--help.").arg(what, command)};
}

/// The parser's own words, but for a wrong command, which they don't name.
QString Fault(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> rest = app.remaining();
  if (!app.get_subcommands().empty()) {
    return QString::fromUtf8(error.what());
  }
  if (rest.empty()) {
    return dynamic_cast<const CLI::RequiredError*>(&error) ? QStringLiteral("A command is missing.")
                                                           : QString::fromUtf8(error.what());
  }
  return QStringLiteral("\"%1\" is not a command.").arg(Text(rest.front()));
}

SpectrumRequest ToSpectrum(const Words& words) {
  SpectrumRequest request{Text(words.target),           words.channels, words.range, words.logarithmic, words.live,
                          Milliseconds(words.interval), words.width,    words.height};
  std::vector<int>& channels = request.channels;
  std::sort(channels.begin(), channels.end());
  channels.erase(std::unique(channels.begin(), channels.end()), channels.end());
  return request;
}

Invocation ToInvocation(const std::string& command, const Words& words) {
  const ServerAddress server{Text(words.host), words.port, Milliseconds(words.timeout)};
  if (command == "query") {
    return {server, QueryRequest{Text(words.target), Text(words.json)}};
  }
  if (command == "spectrum") {
    return {server, ToSpectrum(words)};
  }
  const auto sink = std::ranges::find(sinkCommands, command, &SinkCommand::name);
  return {server, SinkRequest{sink->action, Text(words.target)}};
}

/// What no single option can see; empty when nothing is wrong.
QString Fault(const Words& words) {
  if (words.target.empty()) {
    return QStringLiteral("The path or name of the block is empty.");
  }
  if (std::isnan(words.timeout) || std::isnan(words.interval)) {
    return QStringLiteral("--timeout and --interval take a number of seconds.");
  }
  if (words.range.last && *words.range.last < words.range.first) {
    const QString text = QStringLiteral("--to %1 is below --from %2: no bin is left to show.");
    return text.arg(*words.range.last).arg(words.range.first);
  }
  const QUrl url = QueryTarget(Text(words.target)).Url({Text(words.host), words.port, {}});
  if (url.host().isEmpty()) {
    return QStringLiteral("--host \"%1\" is not a host name or address.").arg(Text(words.host));
  }
  return {};
}

}  // namespace

std::variant<Invocation, Ending> ParseCommandLine(const std::vector<std::string>& words) {
  Words read;
  CLI::App app(help::description, "korvaxctl");
  app.set_version_flag("--version", std::string("korvaxctl 1.0"));
  app.require_subcommand(1);
  app.fallthrough();
  app.footer(help::footer);
  AddConnection(app, read);
  AddQuery(app, read);
  AddSpectrum(app, read);
  AddSinkCommands(app, read);
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::CallForVersion& version) {
    return Ending{ExitCode::Ok, QString::fromUtf8(version.what())};
  } catch (const CLI::Success&) {
    return Ending{ExitCode::Ok, Text(app.help()).trimmed()};
  } catch (const CLI::ParseError& error) {
    return Refusal(app, Fault(app, error));
  }
  const QString fault = Fault(read);
  if (!fault.isEmpty()) {
    return Refusal(app, fault);
  }
  return ToInvocation(app.get_subcommands().front()->get_name(), read);
}

}  // namespace korvax::client
