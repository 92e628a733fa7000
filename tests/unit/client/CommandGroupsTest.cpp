#include "tests/unit/client/ParsedWords.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(CommandGroups, readTheCommandsOfARun) {
  EXPECT_EQ(Parsed<RunRequest>({"run", "start", "first"}).action, RunAction::Start);
  EXPECT_EQ(Parsed<RunRequest>({"run", "stop"}).action, RunAction::Stop);
  EXPECT_EQ(Parsed<RunRequest>({"run", "pause"}).action, RunAction::Pause);
  EXPECT_EQ(Parsed<RunRequest>({"run", "restart"}).action, RunAction::Restart);
  EXPECT_EQ(Parsed<RunRequest>({"run", "info"}).action, RunAction::Info);
}

TEST(CommandGroups, readTheNameOfARunAsItStands) {
  for (const char* id : {"first", "12", "a b", "σ", "stop", ".", "a\"b,c"}) {
    EXPECT_EQ(Parsed<RunRequest>({"run", "start", id}).id, QString(id));
  }
  EXPECT_EQ(Parsed<RunRequest>({"run", "start", "--", "-1"}).id, "-1");
}

TEST(CommandGroups, nothingIsForcedUnlessAskedFor) {
  for (const Words& words : {Words{"run", "start", "first"}, Words{"run", "pause"}, Words{"run", "restart"}}) {
    EXPECT_FALSE(Parsed<RunRequest>(words).force);
    Words forced = words;
    forced.emplace_back("--force");
    EXPECT_TRUE(Parsed<RunRequest>(forced).force);
  }
}

TEST(CommandGroups, readAScope) {
  const auto usual = Parsed<ScopeRequest>({"scope", "scope2"});
  EXPECT_EQ(usual.name, "scope2");
  EXPECT_THAT(usual.channels, ElementsAre(0));
  EXPECT_FALSE(usual.refresh.live);
  EXPECT_FALSE(usual.size.width);
  const auto request = Parsed<ScopeRequest>({"scope", "scope2", "--channel", "4095,1,1", "--live", "--interval",
                                             "0.25", "--width", "100", "--height", "30"});
  EXPECT_THAT(request.channels, ElementsAre(1, 4095));
  EXPECT_TRUE(request.refresh.live);
  EXPECT_EQ(request.refresh.interval, std::chrono::milliseconds(250));
  EXPECT_EQ(request.size.width, 100);
  EXPECT_EQ(request.size.height, 30);
}

TEST(CommandGroups, readRates) {
  const auto usual = Parsed<RatesRequest>({"rates", "a/b"});
  EXPECT_EQ(usual.path, "a/b");
  EXPECT_FALSE(usual.logarithmic);
  EXPECT_FALSE(usual.refresh.live);
  EXPECT_EQ(usual.refresh.interval, std::chrono::seconds(1));
  const auto request = Parsed<RatesRequest>({"rates", "a/b", "--live", "--log", "--interval", "3"});
  EXPECT_TRUE(request.logarithmic);
  EXPECT_TRUE(request.refresh.live);
  EXPECT_EQ(request.refresh.interval, std::chrono::seconds(3));
}

TEST(CommandGroups, readHighVoltage) {
  EXPECT_EQ(Parsed<HvRequest>({"hv", "hv2", "show"}).action, HvAction::Show);
  EXPECT_EQ(Parsed<HvRequest>({"hv", "hv2", "on"}).action, HvAction::On);
  EXPECT_EQ(Parsed<HvRequest>({"hv", "Hardware/BOARD2", "off"}).action, HvAction::Off);
  EXPECT_EQ(Parsed<HvRequest>({"hv", "Hardware/BOARD2", "off"}).block, "Hardware/BOARD2");
}

TEST(CommandGroups, readFiles) {
  const auto summary = Parsed<FilesRequest>({"files", "summary", "a", "b/c"});
  EXPECT_EQ(summary.action, FilesAction::Summary);
  EXPECT_THAT(summary.paths, ElementsAre("a", "b/c"));
  EXPECT_EQ(summary.output, "");
  EXPECT_EQ(Parsed<FilesRequest>({"files", "check", "a"}).action, FilesAction::Check);
  const auto csv = Parsed<FilesRequest>({"files", "csv", "a", "--output", "b.csv"});
  EXPECT_EQ(csv.action, FilesAction::Csv);
  EXPECT_THAT(csv.paths, ElementsAre("a"));
  EXPECT_EQ(csv.output, "b.csv");
}

TEST(CommandGroups, readARunToVerifyAndAFileToRecover) {
  EXPECT_THAT(Parsed<VerifyRequest>({"files", "verify", "a", "b/c"}).folders, ElementsAre("a", "b/c"));
  const auto recover = Parsed<RecoverRequest>({"files", "recover", "a.bin", "b.bin"});
  EXPECT_EQ(recover.file, "a.bin");
  EXPECT_EQ(recover.output, "b.bin");
}

TEST(CommandGroups, readALedger) {
  EXPECT_FALSE(Parsed<LedgerRequest>({"ledger"}).json);
  EXPECT_TRUE(Parsed<LedgerRequest>({"ledger", "--json"}).json);
}

TEST(CommandGroups, readAListOfBlocks) {
  EXPECT_FALSE(Parsed<BlocksRequest>({"blocks"}).json);
  EXPECT_TRUE(Parsed<BlocksRequest>({"blocks", "--json"}).json);
}

TEST(CommandGroups, takeTheConnectionBeforeOrAfterTheirCommand) {
  for (const Words& words : {Words{"--port", "9", "run", "info"}, Words{"run", "--port", "9", "info"},
                             Words{"run", "info", "--port", "9"}, Words{"hv", "--port", "9", "x", "show"}}) {
    const auto read = ParseCommandLine(words);
    ASSERT_TRUE(std::holds_alternative<Invocation>(read));
    EXPECT_EQ(std::get<Invocation>(read).server.port, 9);
  }
}

struct RefusedRow {
  Words words;
  const char* fault;
  const char* help;
};

class GroupRefused : public testing::TestWithParam<RefusedRow> {};

TEST_P(GroupRefused, isAUsageErrorThatNamesTheFaultAndTheHelpOfTheCommand) {
  const Ending ending = Ended(GetParam().words);
  EXPECT_EQ(ending.code, ExitCode::Usage);
  EXPECT_THAT(ending.text.toStdString(), HasSubstr(GetParam().fault));
  EXPECT_THAT(ending.text.toStdString(), HasSubstr(std::string("\nSee korvaxctl ") + GetParam().help + "--help."));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, GroupRefused,
    testing::Values(
        RefusedRow{{"blocks", "spectrum0"}, "spectrum0", "blocks "},
        RefusedRow{{"ledger", "spectrum0"}, "spectrum0", "ledger "},
        RefusedRow{{"files", "verify"}, "FOLDER", "files verify "},
        RefusedRow{{"files", "verify", "a", "--output", "b"}, "--output", "files verify "},
        RefusedRow{{"files", "recover", "a.bin"}, "OUT", "files recover "},
        RefusedRow{{"files", "recover", "", "b.bin"}, "FILE: it is empty", "files recover "},
        RefusedRow{{"files", "recover", "a.bin", "b.bin", "c.bin"}, "c.bin", "files recover "},
        RefusedRow{{"run"}, "A command is missing", "run "},
        RefusedRow{{"run", "dance"}, "\"dance\" is not a command", "run "},
        RefusedRow{{"run", "start"}, "ID", "run start "},
        RefusedRow{{"run", "start", ""}, "ID: it is empty", "run start "},
        RefusedRow{{"run", "start", "a/b"}, "one folder, without \"/\"", "run start "},
        RefusedRow{{"run", "start", "/"}, "one folder, without \"/\"", "run start "},
        RefusedRow{{"run", "start", "a", "b"}, "b", "run start "},
        RefusedRow{{"run", "stop", "first"}, "first", "run stop "},
        RefusedRow{{"run", "stop", "--force"}, "--force", "run stop "},
        RefusedRow{{"run", "info", "--force"}, "--force", "run info "}, RefusedRow{{"scope"}, "NAME", "scope "},
        RefusedRow{{"scope", ""}, "NAME: it is empty", "scope "},
        RefusedRow{{"scope", "s", "--channel", "4096"}, "--channel", "scope "},
        RefusedRow{{"scope", "s", "--channel", "-1"}, "--channel", "scope "},
        RefusedRow{{"scope", "s", "--width", "3"}, "--width", "scope "},
        RefusedRow{{"scope", "s", "--height", "1001"}, "--height", "scope "},
        RefusedRow{{"scope", "s", "--log"}, "--log", "scope "}, RefusedRow{{"rates"}, "PATH", "rates "},
        RefusedRow{{"rates", ""}, "PATH: it is empty", "rates "},
        RefusedRow{{"rates", "a/b", "--interval", "0"}, "0.05 to 86400", "rates "},
        RefusedRow{{"rates", "a/b", "--interval", "nan"}, "0.05 to 86400", "rates "},
        RefusedRow{{"rates", "a/b", "--channel", "1"}, "--channel", "rates "}, RefusedRow{{"hv"}, "BLOCK", "hv "},
        RefusedRow{{"hv", "hv2"}, "ACTION", "hv "}, RefusedRow{{"hv", "", "show"}, "BLOCK: it is empty", "hv "},
        RefusedRow{{"hv", "hv2", "dance"}, "dance", "hv "}, RefusedRow{{"hv", "hv2", "ON"}, "ON", "hv "},
        RefusedRow{{"files"}, "A command is missing", "files "},
        RefusedRow{{"files", "dance"}, "\"dance\" is not a command", "files "},
        RefusedRow{{"files", "summary"}, "PATH", "files summary "},
        RefusedRow{{"files", "check", "a", "--output", "b"}, "--output", "files check "},
        RefusedRow{{"files", "csv", "a", "--output"}, "--output", "files csv "}));

TEST(CommandGroups, everyCommandOfAGroupHasAHelpWithAnExample) {
  for (const Words& words :
       {Words{"run", "start"}, Words{"run", "stop"}, Words{"run", "pause"}, Words{"run", "restart"},
        Words{"run", "info"}, Words{"files", "summary"}, Words{"files", "check"}, Words{"files", "csv"}}) {
    Words asked = words;
    asked.emplace_back("--help");
    const Ending help = Ended(asked);
    EXPECT_EQ(help.code, ExitCode::Ok);
    EXPECT_THAT(help.text.toStdString(), HasSubstr("  korvaxctl " + words[0] + ' ' + words[1]));
  }
}

TEST(CommandGroups, theHelpOfScopeWarnsOfOtherClients) {
  EXPECT_THAT(Ended({"scope", "--help"}).text.toStdString(), HasSubstr("for all its clients"));
}

/// Every line of help that shows a command.
std::vector<Words> Examples(const Words& command) {
  std::vector<Words> examples;
  QString help = Ended(command).text;
  help.replace(QStringLiteral("\\\n"), QString());
  for (const QString& line : help.split('\n')) {
    if (!line.startsWith(QStringLiteral("  korvaxctl "))) {
      continue;
    }
    Words words;
    for (const QString& word : line.simplified().split(' ').mid(1)) {
      words.push_back(word.startsWith('\'') ? word.mid(1, word.size() - 2).toStdString() : word.toStdString());
    }
    examples.push_back(words);
  }
  return examples;
}

TEST(CommandGroups, everyExampleOfTheHelpIsUnderstood) {
  std::size_t count = 0;
  for (const Words& command :
       {Words{"--help"}, Words{"query", "--help"}, Words{"spectrum", "--help"}, Words{"times", "--help"},
        Words{"position", "--help"}, Words{"image", "--help"}, Words{"start", "--help"}, Words{"scope", "--help"},
        Words{"rates", "--help"}, Words{"run", "--help"}, Words{"hv", "--help"}, Words{"files", "--help"},
        Words{"check", "--help"}, Words{"blocks", "--help"}, Words{"ledger", "--help"}}) {
    for (const Words& example : Examples(command)) {
      EXPECT_TRUE(std::holds_alternative<Invocation>(ParseCommandLine(example)))
          << Ended(example).text.toStdString();
      ++count;
    }
  }
  EXPECT_GE(count, 30U);
}

}  // namespace
}  // namespace korvax::client
