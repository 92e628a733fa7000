#include "tests/system/SystemTest.h"

namespace test {

namespace {

class BadConfigurationTest : public SystemTest {
protected:
  void StartOn(const QByteArray& text) {
    installation.WriteConfiguration(text);
    server.Start({QStringLiteral("-c"), installation.ConfigurationPath()});
  }
  void ExpectInvalid(const QByteArray& text) {
    StartOn(text);
    EXPECT_EQ(server.WaitForExit(), 1);
    EXPECT_EQ(server.ErrorLines(), FirstLines() << QStringLiteral("Configuration file  \"%1\" is invalid")
                                                       .arg(installation.ConfigurationPath()));
  }
  void ExpectNoStorage(const QByteArray& text) {
    StartOn(text);
    EXPECT_EQ(server.WaitForExit(), 1);
    EXPECT_EQ(server.ErrorLines(), FirstLines() << QStringLiteral("Storage folder does not exist on this server. "
                                                                  "Create:  \"\"  and check write permission"));
  }
};

constexpr int HundredMegabytes = 100'000'000;

TEST_F(BadConfigurationTest, AnEmptyFileIsInvalid) {
  ExpectInvalid("");
}

TEST_F(BadConfigurationTest, ANumberATextAndAWordAreInvalid) {
  for (const char* text : {"42", "\"text\"", "true", "null"}) {
    ExpectInvalid(text);
  }
}

TEST_F(BadConfigurationTest, BrokenTextIsInvalid) {
  for (const char* text : {"{", "[", "{\"storage\":}", "{} {}", "\xff\xfe{}", "{'storage': 1}"}) {
    ExpectInvalid(text);
  }
}

TEST_F(BadConfigurationTest, AnArrayHasNoStorage) {
  ExpectNoStorage("[]");
  ExpectNoStorage("[{\"storage\": {\"file_path\": \"/tmp\"}}]");
}

TEST_F(BadConfigurationTest, AnEmptyObjectHasNoStorage) {
  ExpectNoStorage("{}");
}

TEST_F(BadConfigurationTest, AHundredMegabytesOfBlanksAreInvalid) {
  ExpectInvalid(QByteArray(HundredMegabytes, ' '));
}

TEST_F(BadConfigurationTest, AHundredMegabytesOfNestedArraysAreInvalid) {
  ExpectInvalid(QByteArray(HundredMegabytes, '['));
}

TEST_F(BadConfigurationTest, AHundredMegabytesOfBinaryDataAreInvalid) {
  ExpectInvalid(QByteArray(HundredMegabytes, '\0'));
}

TEST_F(BadConfigurationTest, AHundredMegabytesInAKeyThatNobodyReadsDoNoHarm) {
  QByteArray text = ToText(configuration);
  text.insert(1, "\"comment\": \"" + QByteArray(HundredMegabytes, 'x') + "\",");
  StartOn(text);
  EXPECT_TRUE(server.WaitUntilReady());
}

TEST_F(BadConfigurationTest, AFolderIsInvalid) {
  server.Start({QStringLiteral("-c"), installation.StoragePath()});
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_EQ(
      server.ErrorLines(),
      (QStringList{QStringLiteral("Velmor - Korvax is starting"),
                   QStringLiteral("Board server configuration is:  \"%1\"").arg(installation.StoragePath()),
                   QStringLiteral("Configuration file  \"%1\" is invalid").arg(installation.StoragePath())}));
}

}  // namespace

}  // namespace test
