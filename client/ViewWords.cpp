#include "client/CommandWords.h"
#include "client/HelpTexts.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace korvax::client {

namespace {

constexpr int mostScopeChannels = 4096;

/// What the parser writes to; every command of this file uses some of it.
struct Words {
  std::string target;
  std::vector<int> channels{0};
  BinRange range;
  bool logarithmic = false;
  bool immediate = false;
  bool noColour = false;
  bool live = false;
  double interval = 1;
  PictureSize size;

  Refresh ToRefresh() const { return {live, Milliseconds(interval)}; }
};

void AddChannels(CLI::App& command, Words& words, int end) {
  command.add_option("--channel", words.channels, "Channels, such as 3 or 0,3,5 (0)")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(CLI::Range(0, end - 1))
      ->option_text("N[,N...]");
}

void AddRefresh(CLI::App& command, Words& words) {
  command.add_flag("--live", words.live, "Draw again and again until Ctrl-C");
  command.add_option("--interval", words.interval, "Between two pictures of --live (1)")
      ->check(Seconds(0.05))
      ->option_text("SECONDS");
}

void AddSize(CLI::App& command, Words& words) {
  command.add_option("--width", words.size.width, "Columns of the picture (as the terminal)")
      ->check(CLI::Range(20, 10000))
      ->option_text("N");
  command.add_option("--height", words.size.height, "Lines of the picture (as the terminal)")
      ->check(CLI::Range(6, 1000))
      ->option_text("N");
}

std::vector<int> Ascending(std::vector<int> channels) {
  std::sort(channels.begin(), channels.end());
  channels.erase(std::unique(channels.begin(), channels.end()), channels.end());
  return channels;
}

Read<Request> ToSpectrum(const Words& words, bool countsWhenIdle) {
  if (words.range.last && *words.range.last < words.range.first) {
    const QString text = QStringLiteral("--to %1 is below --from %2: no bin is left to show.");
    return {{}, text.arg(*words.range.last).arg(words.range.first)};
  }
  return {SpectrumRequest{Text(words.target), countsWhenIdle, Ascending(words.channels), words.range,
                          words.logarithmic, words.ToRefresh(), words.size},
          {}};
}

struct HistogramCommand {
  const char* name;
  const char* description;
  const char* footer;
  bool countsWhenIdle;
};

const HistogramCommand spectrumCommand{"spectrum", "Draw the histogram of one or more channels",
                                       help::spectrumFooter, false};
const HistogramCommand timesCommand{"times", "Draw the time distribution of one or more channels",
                                    help::timesFooter, true};

void AddHistogram(CLI::App& app, Commands& commands, const HistogramCommand& each) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand(each.name, each.description);
  const auto bin = CLI::Range(0, std::numeric_limits<int>::max() - 1);
  AddWord(*command, "PATH", "Full path of the block", words->target);
  AddChannels(*command, *words, std::numeric_limits<int>::max());
  command->add_flag("--log", words->logarithmic, "Logarithmic counts");
  command->add_option("--from", words->range.first, "First bin to show")->check(bin)->option_text("BIN");
  command->add_option("--to", words->range.last, "Last bin to show")->check(bin)->option_text("BIN");
  AddRefresh(*command, *words);
  AddSize(*command, *words);
  command->footer(each.footer);
  commands.push_back({command, [words, idle = each.countsWhenIdle] { return ToSpectrum(*words, idle); }});
}

void AddHeatMapOptions(CLI::App& command, Words& words) {
  AddWord(command, "PATH", "Full path of the block", words.target);
  command.add_flag("--log", words.logarithmic, "Logarithmic colours");
  command.add_flag("--no-colour", words.noColour, "Characters instead of colours");
  AddRefresh(command, words);
  AddSize(command, words);
}

HeatMapRequest ToHeatMap(const Words& words, MapSource source) {
  return {Text(words.target), source, words.logarithmic, !words.noColour, words.ToRefresh(), words.size};
}

void AddPosition(CLI::App& app, Commands& commands) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("position", "Draw a position map as a heat map");
  AddHeatMapOptions(*command, *words);
  command->footer(help::positionFooter);
  commands.push_back({command, [words] { return Read<Request>{ToHeatMap(*words, MapSource::Position), {}}; }});
}

void AddImage(CLI::App& app, Commands& commands) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("image", "Draw an image of pixels as a heat map");
  AddHeatMapOptions(*command, *words);
  command->add_flag("--immediate", words->immediate, "The counts since it was last read; reading empties it");
  command->footer(help::imageFooter);
  commands.push_back({command, [words] {
                        const MapSource source =
                            words->immediate ? MapSource::ImmediateImage : MapSource::CumulativeImage;
                        return Read<Request>{ToHeatMap(*words, source), {}};
                      }});
}

void AddScope(CLI::App& app, Commands& commands) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("scope", "Draw the latest waveform of one or more channels");
  AddWord(*command, "NAME", "Name of the oscilloscope", words->target);
  AddChannels(*command, *words, mostScopeChannels);
  AddRefresh(*command, *words);
  AddSize(*command, *words);
  command->footer(help::scopeFooter);
  commands.push_back(
      {command, [words] {
         return Read<Request>{
             ScopeRequest{Text(words->target), Ascending(words->channels), words->ToRefresh(), words->size}, {}};
       }});
}

void AddRates(CLI::App& app, Commands& commands) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand("rates", "Show the rates and counts of every channel");
  AddWord(*command, "PATH", "Full path of the rate counter", words->target);
  command->add_flag("--log", words->logarithmic, "Logarithmic bars");
  AddRefresh(*command, *words);
  command->footer(help::ratesFooter);
  commands.push_back(
      {command, [words] {
         return Read<Request>{RatesRequest{Text(words->target), words->logarithmic, words->ToRefresh()}, {}};
       }});
}

}  // namespace

void AddViewCommands(CLI::App& app, Commands& commands) {
  AddHistogram(app, commands, spectrumCommand);
  AddHistogram(app, commands, timesCommand);
  AddPosition(app, commands);
  AddImage(app, commands);
  AddScope(app, commands);
  AddRates(app, commands);
}

}  // namespace korvax::client
