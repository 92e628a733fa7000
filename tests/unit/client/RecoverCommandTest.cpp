#include "runfiles/FileSummary.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Printing.h"
#include "tests/unit/client/RunClient.h"
#include "tests/unit/runfiles/Examples.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace {

using korvax::client::ExitCode;
using korvax::runfiles::Form;
using korvax::runfiles::Summarise;
using test::Example;
using test::Outcome;
using test::RunClient;
using testing::HasSubstr;

std::string Content(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class Recovery : public testing::Test {
protected:
  std::string Write(const std::string& name, const std::string& bytes) const { return folder_.Write(name, bytes); }
  std::string Path(const std::string& name) const { return folder_.Path() + "/" + name; }
  static Outcome Recover(const std::string& file, const std::string& output) {
    return RunClient({"files", "recover", file, output});
  }

  test::TemporaryFolder folder_;
};

class RecoveryOf : public Recovery, public testing::WithParamInterface<Example> {
protected:
  // What a file of these bytes is to be recovered as; nothing without a whole head.
  static std::optional<std::string> Expected(const std::string& bytes) {
    const Example& example = GetParam();
    // Fewer digits of the time are a clock that was not set; no letter of CSV tells that a head was to come.
    const bool isShortHead = (example.name == std::string("BinaryList") && bytes.size() >= 5) ||
                             (example.type.form == Form::Csv && bytes.empty());
    if (bytes.size() < example.head.size()) {
      return isShortHead ? std::optional(bytes) : std::nullopt;
    }
    std::string whole = example.head;
    for (const std::string& record : example.records) {
      if (whole.size() + record.size() > bytes.size()) {
        break;
      }
      whole += record;
    }
    return whole + example.tail;
  }
};

INSTANTIATE_TEST_SUITE_P(File, RecoveryOf, testing::ValuesIn(test::Examples()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(RecoveryOf, keepsTheWholeRecordsOfEveryBeginning) {
  const std::string bytes = GetParam().Bytes();
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    SCOPED_TRACE(length);
    const std::string beginning = bytes.substr(0, length);
    const std::string file = Write(GetParam().fileName, beginning);
    const std::string output = Path("out-" + std::to_string(length) + GetParam().fileName);
    const Outcome outcome = Recover(file, output);
    const std::optional<std::string> expected = Expected(beginning);
    EXPECT_EQ(Content(file), beginning);
    if (expected) {
      ASSERT_EQ(outcome.code, ExitCode::Ok) << outcome.error.toStdString();
      EXPECT_EQ(Content(output), *expected);
      EXPECT_EQ(Summarise(output).fault, std::nullopt);
      EXPECT_EQ(Summarise(output).records, Summarise(file).records);
    } else {
      EXPECT_EQ(outcome.code, ExitCode::BadFile);
      EXPECT_THAT(outcome.error.toStdString(), HasSubstr("Expected at its beginning: "));
      EXPECT_FALSE(std::filesystem::exists(output));
    }
  }
}

TEST_P(RecoveryOf, endsBeforeARecordThatIsMalformed) {
  const Example& example = GetParam();
  const std::string noise(50, '\xff');
  const std::string file = Write(example.fileName, example.head + example.records[0] + noise);
  const std::string output = Path(std::string("out-") + example.fileName);
  EXPECT_EQ(Recover(file, output).code, ExitCode::Ok);
  // In a binary list any 25 bytes are an event.
  const bool isAnyEvent = example.type == korvax::runfiles::FileType{korvax::runfiles::Kind::List, Form::Binary};
  EXPECT_EQ(Content(output), example.head + example.records[0] + (isAnyEvent ? noise : example.tail));
}

const std::string Lines = "1,0,11,\n2,5,12,\n";

TEST_F(Recovery, tellsWhatWasKeptAndCut) {
  const std::string file = Write("x_0.csv", Lines + "4000,");
  const std::string output = Path("y.csv");
  EXPECT_EQ(Recover(file, output).out.toStdString(),
            file + ": cut off, 5 bytes of an unfinished part from byte 16 on, 2 whole records before\n" + output +
                ": 2 records, 16 bytes kept; 5 bytes cut; the damage begins at byte 16\n");
}

TEST_F(Recovery, tellsThatAnArrayWasClosed) {
  const std::string file = Write("x_0.json", "[{\"timestamp\":1,\"channel\":2,\"energy_raw\":3}\n");
  const std::string output = Path("y.json");
  EXPECT_EQ(Recover(file, output).out.toStdString(),
            file + ": not closed, ends at byte 44, 1 whole record before\n" + output +
                ": 1 record, 44 bytes kept, closed with \"]\"; 0 bytes cut; the damage begins at byte 44\n");
}

TEST_F(Recovery, tellsWhereTheDamageBeginsWithinARecord) {
  const std::string file = Write("x_0.csv", Lines + "4,x,5,\n5,5,5,\n");
  EXPECT_THAT(Recover(file, Path("y.csv")).out.toStdString(),
              HasSubstr("16 bytes kept; 14 bytes cut; the damage begins at byte 18\n"));
}

TEST_F(Recovery, tellsThatAFileIsWhole) {
  const std::string file = Write("x_0.csv", Lines);
  const std::string output = Path("y.csv");
  EXPECT_EQ(Recover(file, output).out.toStdString(),
            file + " is whole: 2 records, copied as it is to " + output + "\n");
  EXPECT_EQ(Content(output), Lines);
}

TEST_F(Recovery, neverWritesOverAFile) {
  const std::string file = Write("x_0.csv", Lines + "4000,");
  const std::string taken = Write("y.csv", "precious");
  for (const std::string& output : {taken, file}) {
    const Outcome outcome = Recover(file, output);
    EXPECT_EQ(outcome.code, ExitCode::OutputFailed);
    EXPECT_THAT(outcome.error.toStdString(), HasSubstr("Name a file that isn't there yet."));
  }
  EXPECT_EQ(Content(taken), "precious");
  EXPECT_EQ(Content(file), Lines + "4000,");
}

TEST_F(Recovery, takesNoNamesByWhichAFileWouldNotBeRead) {
  const std::string file = Write("x_0.csv", Lines);
  EXPECT_EQ(Recover(file, Path("y.json")).code, ExitCode::Usage);
  EXPECT_EQ(Recover(file, Path("y")).code, ExitCode::Usage);
  EXPECT_EQ(Recover(Write("x_0.stat", Lines), Path("y.stat")).code, ExitCode::Usage);
  EXPECT_FALSE(std::filesystem::exists(Path("y.json")));
}

TEST_F(Recovery, saysWhatWasExpectedOfAHead) {
  const std::string file = Write("x_0.bin", "KVXT1700000000");
  const Outcome outcome = Recover(file, Path("y.bin"));
  EXPECT_EQ(outcome.code, ExitCode::BadFile);
  EXPECT_THAT(outcome.error.toStdString(),
              HasSubstr("see byte 0.\nNothing was written. Expected at its beginning: "
                        "\"KVXS\" and 10 digits (events)"));
  EXPECT_FALSE(std::filesystem::exists(Path("y.bin")));
}

TEST_F(Recovery, needsAFileAndAFolderToWriteTo) {
  EXPECT_EQ(Recover(Path("absent.bin"), Path("y.bin")).code, ExitCode::BadFile);
  EXPECT_EQ(Recover(Write("x_0.csv", Lines), Path("absent/y.csv")).code, ExitCode::OutputFailed);
}

TEST_F(Recovery, keepsALargeFileByteForByte) {
  std::string bytes = "KVXS1700000000";
  for (int i = 0; i < 100'000; ++i) {
    bytes += std::string(24, static_cast<char>(i % 251)) + '\0';
  }
  EXPECT_EQ(Recover(Write("x_0.bin", bytes + "tail"), Path("y.bin")).code, ExitCode::Ok);
  EXPECT_EQ(Content(Path("y.bin")), bytes);
}

TEST_F(Recovery, leavesNothingBehindOnAFullDisk) {
  const std::string file = Write("x_0.csv", Lines + std::string(3000, '1'));
  Outcome outcome;
  {
    const test::FileSizeLimit limit(10);
    korvax::client::Console console(stdout, stderr);
    outcome.code = korvax::client::RunKorvaxctl({"files", "recover", file, Path("y.csv")}, console);
  }
  EXPECT_EQ(outcome.code, ExitCode::OutputFailed);
  EXPECT_FALSE(std::filesystem::exists(Path("y.csv")));
}

}  // namespace
