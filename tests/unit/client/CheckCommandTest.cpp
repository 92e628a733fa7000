#include "tests/support/TemporaryFolder.h"
#include "tests/unit/client/ParsedWords.h"
#include "tests/unit/client/RunClient.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using test::Outcome;
using test::RunClient;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* Good = R"({
  "storage": {"file_path": "runs", "format": "BIN"},
  "Hardware": [{"enable": false}]
})";

TEST(CheckCommand, readsAFileOrTheWishForTheSchema) {
  EXPECT_EQ(Parsed<CheckRequest>({"check", "a b.json"}).file, "a b.json");
  EXPECT_FALSE(Parsed<CheckRequest>({"check", "a.json"}).schema);
  EXPECT_TRUE(Parsed<CheckRequest>({"check", "--schema"}).schema);
}

TEST(CheckCommand, refusesWordsWithoutAFileAndTooMany) {
  for (const Words& words :
       {Words{"check"}, Words{"check", ""}, Words{"check", "a", "b"}, Words{"check", "a", "--schema"}}) {
    EXPECT_EQ(Ended(words).code, ExitCode::Usage) << words.size();
  }
  EXPECT_THAT(Ended({"check"}).text.toStdString(), StartsWith("FILE is required\nSee korvaxctl check --help"));
}

TEST(CheckCommand, hasAHelpWithAnExample) {
  EXPECT_THAT(Ended({"check", "--help"}).text.toStdString(), HasSubstr("  korvaxctl check examples/demo.json"));
}

TEST(CheckCommand, saysThatAFileHasNoErrors) {
  const test::TemporaryFolder folder;
  const std::string file = folder.Write("good.json", Good);
  const Outcome outcome = RunClient({"check", file});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out.toStdString(), file + ": no errors\n");
  EXPECT_EQ(outcome.error, "");
}

TEST(CheckCommand, endsWellWithWarningsAlone) {
  const test::TemporaryFolder folder;
  std::string text = Good;
  const std::string file = folder.Write("warned.json", text.replace(text.find("\"format\""), 8, "\"formt\""));
  const Outcome outcome = RunClient({"check", file});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_EQ(outcome.out.toStdString(),
            file +
                ":2: warning: storage key \"formt\": expected a key that the server knows; found an unknown one "
                "(did you mean \"format\"?)\n" +
                file + ": no errors, 1 warning\n");
  EXPECT_EQ(outcome.error, "");
}

TEST(CheckCommand, listsErrorsAndEndsWithTheCodeOfABadFile) {
  const test::TemporaryFolder folder;
  std::string text = Good;
  text.replace(text.find("\"BIN\""), 5, "7, \"x\": 1");
  const std::string file = folder.Write("bad.json", text.replace(text.find("false"), 5, std::string("0")));
  const Outcome outcome = RunClient({"check", file});
  EXPECT_EQ(static_cast<int>(outcome.code), 8);
  EXPECT_EQ(outcome.out.toStdString(),
            file + ":2: error: storage key \"format\": expected one of \"BIN\", \"CSV\", \"JSON\"; found 7\n" +
                file +
                ":2: warning: storage key \"x\": expected a key that the server knows; found an unknown one\n" +
                file + ":3: error: Hardware[0] key \"enable\": expected true or false; found 0\n");
  EXPECT_EQ(outcome.error.toStdString(), "korvaxctl: " + file + ": 2 errors, 1 warning.\n");
}

TEST(CheckCommand, saysHowManyFindingsItLeavesOut) {
  const test::TemporaryFolder folder;
  std::string text = R"({"storage": {"file_path": "runs"}, "Hardware": [0)";
  for (int i = 0; i < 1001; ++i) {
    text += ", 0";
  }
  const std::string file = folder.Write("many.json", text + "]}");
  const Outcome outcome = RunClient({"check", file});
  EXPECT_EQ(outcome.code, ExitCode::BadFile);
  EXPECT_THAT(outcome.out.toStdString(), EndsWith("\n" + file + ": 2 findings more\n"));
  EXPECT_EQ(outcome.error.toStdString(), "korvaxctl: " + file + ": 1002 errors.\n");
}

TEST(CheckCommand, namesTheColumnOfASyntaxError) {
  const test::TemporaryFolder folder;
  const std::string file = folder.Write("half.json", "{\n \"a\" 1}");
  const Outcome outcome = RunClient({"check", file});
  EXPECT_EQ(outcome.code, ExitCode::BadFile);
  EXPECT_THAT(outcome.out.toStdString(),
              StartsWith(file + ":2:7: error: this is no JSON: missing name separator"));
}

TEST(CheckCommand, saysWhyAFileCannotBeRead) {
  const Outcome outcome = RunClient({"check", "/not/there.json"});
  EXPECT_EQ(outcome.code, ExitCode::BadFile);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error.toStdString(), "korvaxctl: /not/there.json can't be read: No such file or directory.\n");
}

TEST(CheckCommand, neverReadsForEver) {
  const Outcome outcome = RunClient({"check", "/dev/zero"});
  EXPECT_EQ(outcome.code, ExitCode::BadFile);
  EXPECT_THAT(outcome.error.toStdString(), HasSubstr("expected a regular file"));
}

TEST(CheckCommand, printsTheSchema) {
  const Outcome outcome = RunClient({"check", "--schema"});
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out.toStdString(),
              StartsWith("{\n  \"$schema\": \"http://json-schema.org/draft-07/schema#\""));
  EXPECT_THAT(outcome.out.toStdString(), EndsWith("}\n"));
}

}  // namespace
}  // namespace korvax::client
