#include "framework/JsonFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <random>

namespace {

using korvax::CheckConfiguration;
using korvax::CheckConfigurationFile;
using korvax::CheckReport;

std::string OnlyFinding(const QByteArray& text) {
  return test::Joined(test::FindingsIn(text));
}

TEST(Report, namesLineAndColumnOfWhatIsNoJson) {
  EXPECT_EQ(OnlyFinding("{\n  \"a\": 1,\n  \"\xC3\xA4\": x}"), "3:8: error: this is no JSON: illegal number");
  EXPECT_EQ(OnlyFinding(""), "1:1: error: this is no JSON: illegal value");
  EXPECT_EQ(OnlyFinding("{\"a\": 1\r\n\r\n"), "3:1: error: this is no JSON: unterminated object");
}

TEST(Report, ofAFileThatIsNoObject) {
  EXPECT_EQ(OnlyFinding("\n[1]"), "2: error: top level: expected an object; found an array");
}

TEST(Report, warnsOfAKeyThatStandsTwice) {
  EXPECT_EQ(
      OnlyFinding("{\"storage\": {\"file_path\": 5,\n\"file_path\": \"runs\"},\n"
                  "\"Hardware\": [{\"enable\": false}]}"),
      "2: warning: storage key \"file_path\": expected each key once, as the last of several counts; found one "
      "that stands here before");
}

TEST(Report, countsLineEndsOfAllSystemsAsTheServerReadsThem) {
  const std::string finding = "3: error: storage key \"file_path\": expected a text; found 5";
  EXPECT_EQ(
      OnlyFinding("{\n\"storage\": {\n\"file_path\": 5},\n\"Hardware\": [{\"enable\": false}]}").substr(0, 10),
      finding.substr(0, 10));
  EXPECT_EQ(OnlyFinding("{\r\n\"storage\": {\r\n\"file_path\": 5},\r\n\"Hardware\": [{\"enable\": false}]}")
                .substr(0, 10),
            finding.substr(0, 10));
}

TEST(Report, showsTextsOfTheFileHarmlesslyAndCutOff) {
  const QByteArray text = "{\"storage\": {\"file_path\": \"runs\", \"format\": \"\\u001b[2J\xE2\x80\xAE" +
                          QByteArray(100, 'x') + "\"}, \"Hardware\": [{\"enable\": false}]}";
  EXPECT_EQ(OnlyFinding(text),
            "1: error: storage key \"format\": expected one of \"BIN\", \"CSV\", \"JSON\"; found \"\\u001b[2J " +
                std::string(55, 'x') + "\xE2\x80\xA6\"");
}

TEST(Report, isInLineOrderWithoutTheSameTwice) {
  const QByteArray text =
      "{\"storage\": {\"file_path\": \"\"},\n\"Hardware\": [{\"enable\": false, \"id\": true}, {\"enable\": 1},\n"
      "{\"enable\": false, \"id\": null}]}";
  EXPECT_EQ(OnlyFinding(text),
            "1: error: storage key \"file_path\": expected the path of a folder; found \"\"\n"
            "2: error: Hardware[0] key \"id\": expected a text or an integer from -2147483648 to 2147483647; "
            "found true\n"
            "2: error: Hardware[1] key \"enable\": expected true or false; found 1\n"
            "3: error: Hardware[2] key \"id\": expected a text or an integer from -2147483648 to 2147483647; "
            "found null");
}

TEST(Report, keepsAThousandFindingsAndCountsTheOthers) {
  QByteArray text = "{\"storage\": {\"file_path\": \"runs\"}, \"Hardware\": [{\"enable\": false}";
  for (int i = 0; i < 1500; ++i) {
    text += ", 5";
  }
  const CheckReport report = CheckConfiguration(text + "]}");
  EXPECT_EQ(report.findings.size(), 1000U);
  EXPECT_EQ(report.errors, 1500);
  EXPECT_EQ(report.notShown, 500);
}

TEST(Report, survivesDeepNesting) {
  const QByteArray deep = QByteArray(10'000, '[') + QByteArray(10'000, ']');
  EXPECT_EQ(CheckConfiguration(deep).errors, 1);
  const QByteArray allowed = QByteArray(500, '[') + QByteArray(500, ']');
  EXPECT_EQ(CheckConfiguration("{\"storage\": {\"file_path\": " + allowed +
                               "}, \"Hardware\": [{\"x\": " + allowed + "}]}")
                .errors,
            1);
}

TEST(Report, readsNoMoreThanFourMebibytes) {
  const test::TemporaryFolder folder;
  const std::string good = test::ProjectFile(QStringLiteral("examples/replay.json")).toStdString();
  const std::string full = good + std::string((4U << 20) - good.size(), '\n');
  const auto report = CheckConfigurationFile(QString::fromStdString(folder.Write("full.json", full)));
  EXPECT_EQ(std::get<CheckReport>(report).errors, 0);
  const auto refused = CheckConfigurationFile(QString::fromStdString(folder.Write("more.json", full + "\n")));
  EXPECT_EQ(std::get<QString>(refused), QStringLiteral("it is larger than 4 MiB, unlike any configuration"));
  EXPECT_LE(korvax::LargestConfiguration, korvax::LargestJsonFile);
}

// A pipe that nobody writes to would never be opened.
TEST(Report, isOfRegularFilesOnly) {
  const test::TemporaryFolder folder;
  const std::string pipe = folder.Path() + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string link = folder.Path() + "/link";
  ASSERT_EQ(symlink("pipe", link.c_str()), 0);
  for (const std::string& path : {pipe, link, folder.Path(), std::string("/dev/zero")}) {
    EXPECT_EQ(std::get<QString>(CheckConfigurationFile(QString::fromStdString(path))),
              QStringLiteral("expected a regular file"))
        << path;
  }
}

TEST(Report, saysWhyAFileCannotBeRead) {
  EXPECT_EQ(std::get<QString>(CheckConfigurationFile(QStringLiteral("/not/there"))),
            QStringLiteral("No such file or directory"));
  EXPECT_EQ(std::get<QString>(CheckConfigurationFile(QString())), QStringLiteral("its name is empty"));
}

// Of the largest files that are read: many values in one array, and as many findings.
TEST(Report, ofTheLargestFilesComesInBoundedTime) {
  const QByteArray elements = QByteArray("0,").repeated(1'000'000) + '0';
  EXPECT_EQ(
      CheckConfiguration("{\"storage\": {\"file_path\": \"runs\"}, \"Hardware\": [" + elements + "]}").errors,
      1'000'001);
  EXPECT_EQ(CheckConfiguration('[' + elements + ']').errors, 1);
}

TEST(Report, survivesDamagedFiles) {
  const QByteArray good = test::ProjectFile(QStringLiteral("tests/unit/configuration/complete.json"));
  std::mt19937 random(7);
  const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
  const QByteArray bytes("\0\"\\{}[]:,0-e.ntf \n\xFF\xC3", 20);
  for (int i = 0; i < 2000; ++i) {
    QByteArray damaged = good;
    for (int edits = 1 + below(3); edits > 0; --edits) {
      damaged[below(damaged.size())] = bytes[below(bytes.size())];
    }
    const CheckReport report = CheckConfiguration(i % 2 == 0 ? damaged : damaged.left(below(damaged.size())));
    for (const korvax::Finding& finding : report.findings) {
      ASSERT_GE(finding.line, 1);
      ASSERT_LE(finding.line, good.count('\n') + 10);
    }
  }
}

// Every cut of the file on its own is one fault of syntax.
TEST(Report, ofEveryTruncatedFileIsOneError) {
  const QByteArray good = test::ProjectFile(QStringLiteral("examples/replay.json")).trimmed();
  for (int size = 0; size < good.size(); ++size) {
    const CheckReport report = CheckConfiguration(good.left(size));
    ASSERT_EQ(report.errors, 1) << size;
    ASSERT_GE(report.findings[0].column, 1) << size;
  }
}

}  // namespace
