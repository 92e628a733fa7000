#include "server/Configuration.h"

#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class ConfigurationTest : public testing::Test {
protected:
  std::optional<Configuration> Load(const QByteArray& text) {
    QFile file(Path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
    file.close();
    return Configuration::Load(Path());
  }
  QString Path() const { return folder_.path() + "/config.json"; }

  test::LogCapture log_;
  QTemporaryDir folder_;
};

constexpr const char* Good =
    R"({"storage": {"file_path": "/data"}, "Hardware": [{"id": 1}], "processing": [{}, {}],
        "network": {"max_connections": 5}, "other": 1})";

void ExpectGood(const std::optional<Configuration>& configuration) {
  ASSERT_TRUE(configuration);
  EXPECT_EQ(configuration->storagePath, QString("/data"));
  EXPECT_EQ(configuration->hardware, test::Array(R"([{"id": 1}])"));
  EXPECT_EQ(configuration->processing, test::Array("[{}, {}]"));
  EXPECT_EQ(configuration->network.toObject(), test::Object(R"({"max_connections": 5})"));
}

void ExpectEmpty(const std::optional<Configuration>& configuration) {
  ASSERT_TRUE(configuration);
  EXPECT_EQ(configuration->storagePath, QString());
  EXPECT_TRUE(configuration->hardware.isEmpty());
  EXPECT_TRUE(configuration->processing.isEmpty());
  EXPECT_TRUE(configuration->network.isUndefined());
}

TEST_F(ConfigurationTest, ReadsTheFourKeys) {
  ExpectGood(Load(Good));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(ConfigurationTest, LineEndsAndAByteOrderMarkDoNotMatter) {
  ExpectGood(Load(QByteArray(Good).replace(", ", ",\r\n")));
  ExpectGood(Load(QByteArray(Good).replace(", ", ",\n\t")));
  ExpectGood(Load(QByteArray("\xEF\xBB\xBF") + Good));
  ExpectGood(Load(QByteArray(" \r\n\t") + Good + "\r\n\r\n"));
}

TEST_F(ConfigurationTest, BytesThatAreNoUtf8BecomeReplacementCharacters) {
  const auto configuration = Load("{\"storage\": {\"file_path\": \"a\xFF\"}}");
  ASSERT_TRUE(configuration);
  EXPECT_EQ(configuration->storagePath, QString("a") + QChar(0xFFFD));
}

TEST_F(ConfigurationTest, WhatIsNoJsonDocumentIsRefused) {
  for (const char* text :
       {"", " ", "\xEF\xBB\xBF", "5", "\"text\"", "true", "null", "{", "}", "[1,", "{\"a\": }", "{'a': 1}",
        "{} {}", "{},", "// nothing\n{}", "not json", "\x01\x02\x03", "{\"a\": 01x}"}) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(Load(text));
  }
  EXPECT_FALSE(Load(QByteArray(4, '\0')));
  EXPECT_FALSE(Load(QByteArray(100000, '[') + QByteArray(100000, ']')));
}

TEST_F(ConfigurationTest, AnArrayOrAnEmptyObjectReadsAsEmpty) {
  ExpectEmpty(Load("[]"));
  ExpectEmpty(Load("{}"));
  ExpectEmpty(Load(QByteArray("[") + Good + "]"));
}

TEST_F(ConfigurationTest, KeysOfTheWrongTypeReadAsEmpty) {
  for (const char* wrong : {"1", "true", "null", "\"x\"", "{}", "{\"a\": [1]}", "1.5"}) {
    SCOPED_TRACE(wrong);
    ExpectEmpty(Load(QByteArray(R"({"storage": W, "Hardware": W, "processing": W})").replace("W", wrong)));
  }
  ExpectEmpty(Load(R"({"storage": [{"file_path": "/data"}]})"));
  for (const char* wrong : {"1", "true", "null", "[]", "{}"}) {
    SCOPED_TRACE(wrong);
    ExpectEmpty(Load(QByteArray(R"({"storage": {"file_path": W}})").replace("W", wrong)));
  }
}

TEST_F(ConfigurationTest, KeysAreComparedLetterForLetter) {
  ExpectEmpty(Load(R"({"Storage": {"file_path": "x"}, "hardware": [1], "Processing": [1],
                       "storage": {"File_path": "x"}})"));
}

TEST_F(ConfigurationTest, PathsBeyondLatin1AreKept) {
  const auto configuration = Load("{\"storage\": {\"file_path\": \"/d\xC3\xA9/\xD0\x96\"}}");
  ASSERT_TRUE(configuration);
  EXPECT_EQ(configuration->storagePath, QString("/d") + QChar(0xE9) + "/" + QChar(0x0416));
}

TEST_F(ConfigurationTest, AFileThatCannotBeReadIsRefused) {
  EXPECT_FALSE(Configuration::Load(folder_.path() + "/none.json"));
  EXPECT_FALSE(Configuration::Load(folder_.path()));
  EXPECT_FALSE(Configuration::Load(""));
}

TEST_F(ConfigurationTest, AFileOfAHundredMegabytesIsReadOrRefusedLikeASmallOne) {
  constexpr int Size = 100 << 20;
  ExpectGood(Load(QByteArray(Good).insert(1, QByteArray(Size, ' '))));
  EXPECT_FALSE(Load(QByteArray(Size, 'x')));
}

TEST_F(ConfigurationTest, AFileThatIsTooLargeForAnyConfigurationIsRefused) {
  constexpr int Limit = 128 << 20;
  const QByteArray good(Good);
  EXPECT_TRUE(Load(QByteArray(good).insert(1, QByteArray(Limit - good.size(), ' '))));
  EXPECT_FALSE(Load(QByteArray(good).insert(1, QByteArray(Limit - good.size() + 1, ' '))));
}

TEST_F(ConfigurationTest, WhatIsNoRegularFileIsRefusedAndNotWaitedFor) {
  const QString pipe = folder_.filePath("pipe");
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  EXPECT_FALSE(Configuration::Load(pipe));
  EXPECT_FALSE(Configuration::Load("/dev/zero"));
}

}  // namespace
