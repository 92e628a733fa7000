#include "framework/JsonFile.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

class AJsonFile : public testing::Test {
protected:
  QJsonDocument Read(const QByteArray& bytes) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    return korvax::ReadJsonFile(path);
  }

  QTemporaryDir folder;
  const QString path = folder.filePath("file.json");
};

TEST_F(AJsonFile, givesItsObjectOrArray) {
  EXPECT_EQ(Read(R"({"a":{"b":[1,"two",true]}})").object()["a"].toObject()["b"].toArray(),
            (QJsonArray{1, "two", true}));
  EXPECT_EQ(Read("[1,2]").array(), (QJsonArray{1, 2}));
  EXPECT_EQ(Read("\n\t {\"a\" :\r\n 1}\r\n\r\n").object()["a"].toInt(), 1);
  EXPECT_TRUE(Read("{}").isObject());
}

TEST_F(AJsonFile, isReadWholeHoweverLong) {
  const QByteArray text(300'000, 'x');
  EXPECT_EQ(Read("{\"long\":\"" + text + "\"}").object()["long"].toString().size(), 300'000);
}

TEST_F(AJsonFile, holdsTextsAsUtf8) {
  EXPECT_EQ(Read("{\"name\":\"Z\xC3\xA4hler \xC2\xB5\"}").object()["name"].toString(), u"Z\u00E4hler \u00B5");
}

TEST_F(AJsonFile, isReadInSpiteOfBytesThatAreNoUtf8) {
  const QJsonDocument document = Read("{\"name\":\"Z\xE4hler\",\"port\":7}");
  EXPECT_EQ(document.object()["port"].toInt(), 7);
  EXPECT_EQ(document.object()["name"].toString(), u"Z\uFFFDhler");
}

TEST_F(AJsonFile, isNullWhenItIsNoJson) {
  for (const char* const bytes : {"", " ", "{", "{\"a\":1", "{\"a\":1}}", "a", "{'a':1}", "{\"a\":1,}", "[1"}) {
    EXPECT_TRUE(Read(bytes).isNull()) << bytes;
  }
}

TEST_F(AJsonFile, isNullWithoutAWordWhenItCannotBeRead) {
  const test::LogCapture log;
  EXPECT_TRUE(korvax::ReadJsonFile(folder.filePath("missing.json")).isNull());
  EXPECT_TRUE(korvax::ReadJsonFile(folder.path()).isNull());
  EXPECT_TRUE(korvax::ReadJsonFile(path + "/below").isNull());
  EXPECT_EQ(log.Lines(), QStringList());
}

}  // namespace
