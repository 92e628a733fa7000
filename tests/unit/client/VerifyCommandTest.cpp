#include "tests/support/TemporaryFolder.h"
#include "tests/unit/client/RunClient.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace {

using korvax::client::ExitCode;
using test::Outcome;
using testing::HasSubstr;

const std::string Start =
    R"({"event":"start","time":"2026-11-21T14:20:00Z","run_id":"r1","configuration":"/etc/x.json",)"
    R"("configuration_sha256":"00","server":"1.0","qt":"5.15.8"})"
    "\n";
const std::string Stop =
    R"({"event":"stop","time":"2026-11-21T14:30:00Z","ledger":{"blocks":[{"name":"dumper1","type":"dumper",)"
    R"("received":12,"waiting":0,"became":{"written":2,"overwritten":10}}],"balanced":true}})"
    "\n";
const std::string Open = R"({"event":"open","file":"dumper1_0.csv","block":"dumper1"})"
                         "\n";
// The checksum is what the program xxh128sum prints for these lines.
const std::string Lines = "1,0,11,\n2,5,12,\n";
const std::string Sum = "2936f8fc370a0ee77ab81443b480c982";

std::string Close(const std::string& name, const std::string& more = "") {
  return R"({"event":"close","file":")" + name + R"(","block":"dumper1","bytes":16,"records":2,"xxh128":")" + Sum +
         "\"" + more + "}\n";
}

class Verifying : public testing::Test {
protected:
  void Write(const std::string& name, const std::string& bytes) const { folder_.Write(name, bytes); }
  void Summary(const std::string& lines) const { Write("run.summary", lines); }

  // What is printed, with "RUN" for the folder.
  std::string Verify(ExitCode expected) {
    const Outcome outcome = test::RunClient({"files", "verify", folder_.Path()});
    EXPECT_EQ(outcome.code, expected) << outcome.error.toStdString();
    error_ = outcome.error.toStdString();
    QString out = outcome.out;
    return out.replace(QString::fromStdString(folder_.Path()), QStringLiteral("RUN")).toStdString();
  }

  test::TemporaryFolder folder_;
  std::string error_;
};

const std::string Ended = "RUN: run r1, started 2026-11-21T14:20:00Z, ended 2026-11-21T14:30:00Z\n";
const std::string NotEnded =
    "RUN: run r1, started 2026-11-21T14:20:00Z, not ended: the server was killed, or records still\n";
const std::string Account = "RUN: Balanced. 10 records lost: dumper1 wrote over 10.\n";
const std::string Ok = "RUN/dumper1_0.csv: ok, 2 records, 16 bytes\n";

TEST_F(Verifying, finishesWellWhenAllIsAsItWasWritten) {
  Summary(Start + Open + Close("dumper1_0.csv") + Stop);
  Write("dumper1_0.csv", Lines);
  Write("notes.txt", "any");
  EXPECT_EQ(Verify(ExitCode::Ok), Ended + Ok + "RUN/notes.txt: not in the summary\n" + Account);
  EXPECT_EQ(error_, "");
}

// Qt's parser would lose the first list's memory.
TEST_F(Verifying, readsALineWhoseKeyStandsTwice) {
  Summary(Start + R"({"event":[["open"]],"event":"open","file":"dumper1_0.csv"})" + "\n" + Close("dumper1_0.csv") +
          Stop);
  Write("dumper1_0.csv", Lines);
  EXPECT_EQ(Verify(ExitCode::Ok), Ended + Ok + Account);
}

TEST_F(Verifying, comparesStatisticsToo) {
  const std::string stat = R"({"event":"close","file":"dumper1_0.stat","bytes":16,"xxh128":")" + Sum + "\"}\n";
  Summary(Start + stat + Stop);
  Write("dumper1_0.stat", Lines);
  EXPECT_EQ(Verify(ExitCode::Ok), Ended + "RUN/dumper1_0.stat: ok, 16 bytes\n" + Account);
  Write("dumper1_0.stat", "1,0,11,\n2,5,13,\n");
  EXPECT_THAT(Verify(ExitCode::BadFile), HasSubstr("RUN/dumper1_0.stat: changed"));
  Summary(Start + R"({"event":"open","file":"dumper1_0.stat"})" + "\n");
  EXPECT_THAT(Verify(ExitCode::BadFile), HasSubstr("RUN/dumper1_0.stat: not ended; as it is: 16 bytes\n"));
}

TEST_F(Verifying, takesTheLastWordAboutAName) {
  const std::string first = Open + R"({"event":"close","file":"dumper1_0.csv","bytes":1,"xxh128":"00"})" + "\n";
  Summary(Start + first + Open + Close("dumper1_0.csv") + Stop);
  Write("dumper1_0.csv", Lines);
  EXPECT_EQ(Verify(ExitCode::Ok), Ended + Ok + Account);
  Summary(Start + Open + Close("dumper1_0.csv") + Open + Stop);
  EXPECT_THAT(Verify(ExitCode::BadFile), HasSubstr("RUN/dumper1_0.csv: not ended; as it is: good, 2 records\n"));
}

TEST_F(Verifying, tellsWhatBecameOfEachFile) {
  std::string closed;
  for (const char* name : {"d_0.csv", "d_1.csv", "d_2.csv", "d_3.csv", "d_10.csv", "d_11.csv"}) {
    closed += Close(name);
  }
  Summary(Start + closed + R"({"event":"open","file":"d_12.csv"})" + "\n" +
          R"({"event":"close","file":"d_13.csv"})" + "\n" + Close("d_14.csv", R"(,"problem":"disk\u001b full")") +
          Stop);
  Write("d_0.csv", Lines);
  Write("d_1.csv", "1,0,11,\n2,5,13,\n");
  Write("d_2.csv", "1,0,11,\n2,5");
  Write("d_3.csv", Lines + "x");
  std::filesystem::create_directory(folder_.Path() + "/d_11.csv");
  Write("d_12.csv", Lines + "4,4");
  Write("d_13.csv", Lines);
  Write("d_14.csv", Lines);
  EXPECT_EQ(
      Verify(ExitCode::BadFile),
      Ended +
          "RUN/d_0.csv: ok, 2 records, 16 bytes\n"
          "RUN/d_1.csv: changed, its checksum is another than when it was written\n"
          "RUN/d_2.csv: shorter, 11 bytes instead of 16; as it is: cut off, 3 bytes of an unfinished part from "
          "byte 8 on, 1 whole record before\n"
          "RUN/d_3.csv: longer, 17 bytes instead of 16\n"
          "RUN/d_10.csv: missing\n"
          "RUN/d_11.csv: not a file\n"
          "RUN/d_12.csv: not ended; as it is: cut off, 3 bytes of an unfinished part from byte 16 on, 2 whole "
          "records before\n"
          "RUN/d_13.csv: can't be compared, the summary lacks its size or checksum\n"
          "RUN/d_14.csv: ok, 2 records, 16 bytes; but the server could not end it well: disk  full\n" +
          Account);
  EXPECT_EQ(error_, "korvaxctl: 8 files or folders are not as they should be.\n");
}

TEST_F(Verifying, saysThatARunWasNotEnded) {
  Summary(Start + Open + Close("dumper1_0.csv"));
  Write("dumper1_0.csv", Lines);
  EXPECT_EQ(Verify(ExitCode::BadFile), NotEnded + Ok);
  Summary(Start + Stop + R"({"event":"restart","time":"later"})" + "\n");
  EXPECT_THAT(Verify(ExitCode::BadFile), HasSubstr(NotEnded));
}

TEST_F(Verifying, readsASummaryThatBreaksOffAtAnyByte) {
  Write("dumper1_0.csv", Lines);
  const std::string whole = Start + Open + Close("dumper1_0.csv") + Stop;
  for (std::size_t length = 0; length < whole.size() - 1; ++length) {
    SCOPED_TRACE(length);
    Summary(whole.substr(0, length));
    const std::string said = Verify(ExitCode::BadFile);
    EXPECT_THAT(said, HasSubstr(", not ended: "));
    const bool cutOff = length > 0 && whole[length - 1] != '\n' && whole[length] != '\n';
    EXPECT_EQ(said.find(" is cut off\n") != std::string::npos, cutOff) << said;
  }
}

TEST_F(Verifying, passesOverEventsThatItDoesNotKnow) {
  Summary(Start + R"({"event":"pause","time":"t"})" + "\n" + R"({"event":7})" + "\n{}\n" + Stop);
  EXPECT_EQ(Verify(ExitCode::Ok), Ended + Account);
}

TEST_F(Verifying, saysWhichLineIsNone) {
  Summary(Start + "x\n[]\n" + Stop);
  EXPECT_EQ(Verify(ExitCode::BadFile), Ended +
                                           "RUN/run.summary: line 2 is no JSON object\n"
                                           "RUN/run.summary: line 3 is no JSON object\n" +
                                           Account);
}

TEST_F(Verifying, neverLeavesTheFolder) {
  std::string lines;
  for (const char* name : {"", ".", "..", "../x.csv", "/etc/passwd", "a/b.csv", "a\\u0000.csv"}) {
    lines += Close(name);
  }
  Summary(Start + lines + R"({"event":"open","file":[1]})" + "\n" + Stop);
  const std::string said = Verify(ExitCode::BadFile);
  for (const char* line :
       {"line 2 names no file of this folder: \"\"", "line 3 names", "line 4 names", "line 5 names",
        "line 6 names no file of this folder: \"/etc/passwd\"", "line 7 names", "line 8 names", "line 9 names"}) {
    EXPECT_THAT(said, HasSubstr(line));
  }
  EXPECT_EQ(error_, "korvaxctl: 8 files or folders are not as they should be.\n");
}

TEST_F(Verifying, followsNoLinkAndWaitsForNoPipe) {
  const test::TemporaryFolder elsewhere;
  std::filesystem::create_symlink(elsewhere.Write("secret.csv", Lines), folder_.Path() + "/d_0.csv");
  ASSERT_EQ(mkfifo((folder_.Path() + "/d_1.csv").c_str(), 0600), 0);
  Summary(Start + Close("d_0.csv") + Close("d_1.csv") + Stop);
  EXPECT_EQ(Verify(ExitCode::BadFile), Ended +
                                           "RUN/d_0.csv: a link, which is not followed\n"
                                           "RUN/d_1.csv: not a file\n" +
                                           Account);
}

TEST_F(Verifying, withoutASummaryReadsTheFilesAsFarAsTheyGo) {
  Write("d_0.csv", Lines);
  Write("d_1.csv", Lines + "4");
  EXPECT_EQ(Verify(ExitCode::BadFile),
            "RUN: no run.summary, so nothing to compare with; the files as they are:\n"
            "RUN/d_0.csv: good, 2 records\n"
            "RUN/d_1.csv: cut off, 1 byte of an unfinished part from byte 16 on, 2 whole records before\n");
  ASSERT_EQ(mkfifo((folder_.Path() + "/run.summary").c_str(), 0600), 0);
  EXPECT_THAT(Verify(ExitCode::BadFile), HasSubstr("RUN: no run.summary"));
}

TEST_F(Verifying, needsAFolder) {
  const Outcome outcome = test::RunClient({"files", "verify", folder_.Path() + "/absent"});
  EXPECT_EQ(outcome.code, ExitCode::BadFile);
  EXPECT_THAT(outcome.out.toStdString(), HasSubstr("/absent: no folder, or can't be opened\n"));
}

TEST_F(Verifying, hasACodeOfItsOwnForAnAccountThatDoesNotBalance) {
  std::string stop = Stop;
  stop.replace(stop.find("\"received\":12"), 13, "\"received\":13");
  Summary(Start + stop);
  EXPECT_EQ(Verify(ExitCode::NotBalanced),
            Ended + "RUN: Not balanced: dumper1 misses 1 record. 10 records lost: dumper1 wrote over 10.\n");
}

TEST_F(Verifying, managesWithoutAnAccount) {
  for (const char* ledger : {"", R"(,"ledger":7)", R"(,"ledger":{"blocks":{}})"}) {
    Summary(Start + R"({"event":"stop","time":"2026-11-21T14:30:00Z")" + ledger + "}\n");
    EXPECT_EQ(Verify(ExitCode::Ok), Ended + "RUN: the summary has no account of the records\n") << ledger;
  }
}

TEST_F(Verifying, namesAreHarmlessToATerminal) {
  Write("d\x1b[2J.csv", Lines);
  Summary(R"({"event":"start","run_id":"\u001b[2J","time":"\u001b"})"
          "\n" +
          Close("x\\u001b[2J.csv") + R"({"event":"stop","time":"\u001b[2J"})" + "\n");
  EXPECT_EQ(Verify(ExitCode::BadFile).find('\x1b'), std::string::npos);
}

}  // namespace
