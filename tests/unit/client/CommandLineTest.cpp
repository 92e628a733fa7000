#include "tests/unit/client/ParsedWords.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(CommandLine, readsAQuery) {
  const auto request = Parsed<QueryRequest>({"query", "commands", R"({"cmd":"get_run_info","a":[1, 2]})"});
  EXPECT_EQ(request.target, "commands");
  EXPECT_EQ(request.json, R"({"cmd":"get_run_info","a":[1, 2]})");
}

TEST(CommandLine, readsTheCommandsOfASink) {
  EXPECT_EQ(Parsed<SinkRequest>({"start", "a/b"}).action, SinkAction::Start);
  EXPECT_EQ(Parsed<SinkRequest>({"stop", "a/b"}).action, SinkAction::Stop);
  EXPECT_EQ(Parsed<SinkRequest>({"reset", "a/b"}).action, SinkAction::Reset);
  EXPECT_EQ(Parsed<SinkRequest>({"status", "a/b"}).action, SinkAction::Status);
  EXPECT_EQ(Parsed<SinkRequest>({"status", "a/σ b"}).path, "a/σ b");
}

TEST(CommandLine, aSpectrumDefaultsToChannelZeroOnceAndLinear) {
  const auto request = Parsed<SpectrumRequest>({"spectrum", "a/b"});
  EXPECT_EQ(request.path, "a/b");
  EXPECT_THAT(request.channels, ElementsAre(0));
  EXPECT_EQ(request.range, BinRange{});
  EXPECT_FALSE(request.refresh.live);
  EXPECT_FALSE(request.logarithmic);
  EXPECT_EQ(request.refresh.interval, std::chrono::seconds(1));
  EXPECT_FALSE(request.size.width);
  EXPECT_FALSE(request.size.height);
}

TEST(CommandLine, readsEveryOptionOfASpectrum) {
  const auto request =
      Parsed<SpectrumRequest>({"spectrum", "--channel", "5,1", "a/b", "--live", "--log", "--from", "10", "--to",
                               "20", "--width", "100", "--height", "30", "--interval", "0.25"});
  EXPECT_EQ(request.path, "a/b");
  EXPECT_THAT(request.channels, ElementsAre(1, 5));
  EXPECT_EQ(request.range, (BinRange{10, 20}));
  EXPECT_TRUE(request.refresh.live);
  EXPECT_TRUE(request.logarithmic);
  EXPECT_EQ(request.refresh.interval, std::chrono::milliseconds(250));
  EXPECT_EQ(request.size.width, 100);
  EXPECT_EQ(request.size.height, 30);
}

TEST(CommandLine, aTimeDistributionTakesTheOptionsOfASpectrum) {
  EXPECT_FALSE(Parsed<SpectrumRequest>({"spectrum", "a/b"}).countsWhenIdle);
  const auto request =
      Parsed<SpectrumRequest>({"times", "a/b", "--channel", "5,1", "--live", "--log", "--from", "10"});
  EXPECT_TRUE(request.countsWhenIdle);
  EXPECT_EQ(request.path, "a/b");
  EXPECT_THAT(request.channels, ElementsAre(1, 5));
  EXPECT_EQ(request.range, (BinRange{10, std::nullopt}));
  EXPECT_TRUE(request.logarithmic);
  EXPECT_TRUE(request.refresh.live);
}

TEST(CommandLine, aHeatMapDefaultsToOnceLinearAndColoured) {
  for (const auto& [command, source] :
       {std::pair{"position", MapSource::Position}, std::pair{"image", MapSource::CumulativeImage}}) {
    const auto request = Parsed<HeatMapRequest>({command, "a/b"});
    EXPECT_EQ(request.path, "a/b");
    EXPECT_EQ(request.source, source);
    EXPECT_FALSE(request.logarithmic);
    EXPECT_TRUE(request.colours);
    EXPECT_FALSE(request.refresh.live);
    EXPECT_EQ(request.refresh.interval, std::chrono::seconds(1));
    EXPECT_FALSE(request.size.width);
    EXPECT_FALSE(request.size.height);
  }
}

TEST(CommandLine, readsEveryOptionOfAHeatMap) {
  const auto request = Parsed<HeatMapRequest>({"image", "a/b", "--immediate", "--live", "--log", "--no-colour",
                                               "--width", "100", "--height", "30", "--interval", "0.25"});
  EXPECT_EQ(request.source, MapSource::ImmediateImage);
  EXPECT_TRUE(request.logarithmic);
  EXPECT_FALSE(request.colours);
  EXPECT_TRUE(request.refresh.live);
  EXPECT_EQ(request.refresh.interval, std::chrono::milliseconds(250));
  EXPECT_EQ(request.size.width, 100);
  EXPECT_EQ(request.size.height, 30);
}

TEST(CommandLine, theHelpOfImageWarnsThatReadingEmptiesTheImmediateImage) {
  EXPECT_THAT(Ended({"image", "--help"}).text.toStdString(), HasSubstr("empties it for every client"));
}

TEST(CommandLine, sortsChannelsAndDropsRepetitions) {
  const auto request = Parsed<SpectrumRequest>({"spectrum", "a/b", "--channel", "3,1,3", "--channel", "0"});
  EXPECT_THAT(request.channels, ElementsAre(0, 1, 3));
}

TEST(CommandLine, takesTheConnectionBeforeOrAfterTheCommand) {
  for (const Words& words : {Words{"--host", "daq", "--port", "9", "--timeout", "0.5", "status", "a/b"},
                             Words{"status", "a/b", "--host", "daq", "--port", "9", "--timeout", "0.5"}}) {
    const auto read = ParseCommandLine(words);
    ASSERT_TRUE(std::holds_alternative<Invocation>(read));
    const ServerAddress& server = std::get<Invocation>(read).server;
    EXPECT_EQ(server.host, "daq");
    EXPECT_EQ(server.port, 9);
    EXPECT_EQ(server.timeout, std::chrono::milliseconds(500));
  }
}

TEST(CommandLine, connectsToThisMachineByDefault) {
  const auto read = ParseCommandLine({"status", "a/b"});
  const ServerAddress& server = std::get<Invocation>(read).server;
  EXPECT_EQ(server.host, "127.0.0.1");
  EXPECT_EQ(server.port, 51234);
  EXPECT_EQ(server.timeout, std::chrono::seconds(5));
}

class Refused : public testing::TestWithParam<std::pair<Words, const char*>> {};

TEST_P(Refused, isAUsageErrorThatNamesTheFaultAndTheHelp) {
  const auto& [words, fault] = GetParam();
  const Ending ending = Ended(words);
  EXPECT_EQ(ending.code, ExitCode::Usage);
  EXPECT_THAT(ending.text.toStdString(), HasSubstr(fault));
  EXPECT_THAT(ending.text.toStdString(), HasSubstr("--help"));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, Refused,
    testing::Values(std::pair(Words{}, "A command is missing"),
                    std::pair(Words{"dance"}, "\"dance\" is not a command"),
                    std::pair(Words{"--colour"}, "--colour"), std::pair(Words{"query"}, "TARGET"),
                    std::pair(Words{"query", "x"}, "JSON"), std::pair(Words{"query", "x", "{}", "more"}, "more"),
                    std::pair(Words{"spectrum"}, "PATH"), std::pair(Words{"spectrum", ""}, "empty"),
                    std::pair(Words{"start"}, "PATH"), std::pair(Words{"status", "a/b", "stop", "a/b"}, ""),
                    std::pair(Words{"spectrum", "a/b", "--colour"}, "--colour"),
                    std::pair(Words{"spectrum", "a/b", "--channel"}, "--channel"),
                    std::pair(Words{"spectrum", "a/b", "--channel", "x"}, "--channel"),
                    std::pair(Words{"spectrum", "a/b", "--channel", "-1"}, "--channel"),
                    std::pair(Words{"spectrum", "a/b", "--channel", "99999999999"}, "--channel"),
                    std::pair(Words{"spectrum", "a/b", "--from", "20", "--to", "10"}, "--from 20"),
                    std::pair(Words{"spectrum", "a/b", "--from", "-1"}, "--from"),
                    std::pair(Words{"spectrum", "a/b", "--width", "3"}, "--width"),
                    std::pair(Words{"spectrum", "a/b", "--height", "2"}, "--height"),
                    std::pair(Words{"spectrum", "a/b", "--interval", "0"}, "--interval"),
                    std::pair(Words{"times", "a/b", "--from", "20", "--to", "10"}, "--from 20"),
                    std::pair(Words{"position"}, "PATH"), std::pair(Words{"image", ""}, "empty"),
                    std::pair(Words{"position", "a/b", "--immediate"}, "--immediate"),
                    std::pair(Words{"position", "a/b", "--channel", "1"}, "--channel"),
                    std::pair(Words{"image", "a/b", "--width", "3"}, "--width"),
                    std::pair(Words{"image", "a/b", "--interval", "0"}, "--interval"),
                    std::pair(Words{"status", "a/b", "--port", "0"}, "--port"),
                    std::pair(Words{"status", "a/b", "--port", "65536"}, "--port"),
                    std::pair(Words{"status", "a/b", "--timeout", "soon"}, "--timeout"),
                    std::pair(Words{"status", "a/b", "--timeout", "-1"}, "--timeout"),
                    std::pair(Words{"status", "a/b", "--timeout", "nan"}, "--timeout"),
                    std::pair(Words{"status", "a/b", "--host", ""}, "--host"),
                    std::pair(Words{"status", "a/b", "--host", "a b"}, "--host")));

TEST(CommandLine, theHelpListsCommandsExamplesAndExitCodes) {
  const Ending help = Ended({"--help"});
  EXPECT_EQ(help.code, ExitCode::Ok);
  for (const char* part :
       {"query",     "spectrum",  "times",       "position", "image", "start", "stop",   "reset",
        "status",    "scope",     "rates",       "run",      "hv",    "files", "--host", "--port",
        "--timeout", "Examples:", "Exit codes:", "  0  ",    "  1  ", "  2  ", "  3  ",  "  4  ",
        "  5  ",     "  6  ",     "  7  ",       "  8  ",    "  9  "}) {
    EXPECT_THAT(help.text.toStdString(), HasSubstr(part));
  }
}

TEST(CommandLine, everyCommandHasAHelpOfItsOwnWithAnExample) {
  for (const std::string command : {"query", "spectrum", "times", "position", "image", "start", "stop", "reset",
                                    "status", "scope", "rates", "hv"}) {
    for (const Words& words : {Words{command, "--help"}, Words{command, "a/b", "-h"}}) {
      const Ending help = Ended(words);
      EXPECT_EQ(help.code, ExitCode::Ok);
      EXPECT_THAT(help.text.toStdString(), HasSubstr("  korvaxctl " + command + " "));
    }
  }
}

TEST(CommandLine, tellsItsVersion) {
  EXPECT_EQ(Ended({"--version"}).code, ExitCode::Ok);
  EXPECT_EQ(Ended({"--version"}).text, "korvaxctl 1.0");
}

}  // namespace
}  // namespace korvax::client
