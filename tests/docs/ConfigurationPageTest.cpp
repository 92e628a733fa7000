#include "boards/DigitizerBoard.h"
#include "control/NetworkSettings.h"
#include "control/StorageSettings.h"
#include "framework/KorvaxBlock.h"
#include "server/BlockFactory.h"
#include "tests/docs/DemoChain.h"
#include "tests/docs/MarkdownPage.h"
#include "tests/support/LogCapture.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QJsonObject Parse(const QString& text) {
  QJsonParseError error{};
  const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << qPrintable(text);
  return document.object();
}

QString SourceText() {
  QString text;
  for (const char* folder :
       {"boards", "framework", "acquisition", "processing", "sinks", "recording", "control", "server"}) {
    QDirIterator files(QStringLiteral(KORVAX_PROJECT_DIR "/") + QLatin1String(folder), {QStringLiteral("*.cpp")},
                       QDir::Files);
    while (files.hasNext()) {
      QFile file(files.next());
      EXPECT_TRUE(file.open(QIODevice::ReadOnly));
      text += QString::fromUtf8(file.readAll());
    }
  }
  return text;
}

QSet<QString> KeysInCode() {
  // Keys are read as object["key"] and parameters stand in rules as {QLatin1String("key"), ...
  static const QRegularExpression pattern(
      QStringLiteral(R"re(\["([A-Za-z_]+)"\]|\{QLatin1String\("([a-z_]+)"\),)re"));
  QSet<QString> keys;
  for (auto matches = pattern.globalMatch(SourceText()); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    keys << match.captured(1) + match.captured(2);
  }
  return keys;
}

TEST(ConfigurationPage, TheDemoConfigurationBuilds) {
  const test::DemoChain chain;
  EXPECT_EQ(chain.Fault().toStdString(), std::string());
  EXPECT_EQ(chain.Boards().size(), 2U);
}

TEST(ConfigurationPage, ItsBlocksBuildOnItsBoard) {
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  QJsonArray blocks;
  for (const QString& block : page.BlocksOf(QStringLiteral("json block"))) {
    blocks.append(Parse(block));
  }
  ASSERT_GE(blocks.size(), 2);
  const QJsonObject filterChain{{"enable", true}, {"name", "page"}, {"chain", blocks}};
  const test::DemoChain chain({QJsonObject{{"filter_chain", QJsonArray{filterChain}}}});
  EXPECT_EQ(chain.Fault().toStdString(), std::string());
}

TEST(ConfigurationPage, ItsBoardsHaveTheParametersEndpointsAndCommandsThatItShows) {
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  const auto entries = page.BlocksOf(QStringLiteral("json board"));
  ASSERT_EQ(entries.size(), 1U);
  const test::FakeVendor vendor;
  DigitizerBoard board(vendor.Lookup());
  board.ApplyConfigs(Parse(entries.front()));
  board.LoadEndpoints(Parse(entries.front()));
  board.LoadCommands(Parse(entries.front()));
  EXPECT_EQ(vendor.Calls(), (QStringList{"set \\Channel0\\ChEnable=1", "set \\Channel1\\ChEnable=1"}));
  ASSERT_EQ(board.Endpoints().size(), 1U);
  EXPECT_EQ(board.Endpoints().front().startCommands.size(), 1U);
  EXPECT_EQ(board.Endpoints().front().stopCommands.size(), 1U);
}

TEST(ConfigurationPage, ItsStorageSettingsAreReadAsTheyStand) {
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  const auto blocks = page.BlocksOf(QStringLiteral("json storage"));
  ASSERT_EQ(blocks.size(), 1U);
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("c.json")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("{\"storage\": " + blocks.front().toUtf8() + "}");
  file.close();
  const StorageSettings settings = StorageSettings::Load(file.fileName());
  EXPECT_EQ(settings.filePath, QStringLiteral("demo-storage"));
  EXPECT_EQ(settings.format, QStringLiteral("BIN"));
  EXPECT_EQ(settings.eventsPerFile, 1'000'000);
  EXPECT_EQ(settings.wavedumpTimeInterval, 200);
  EXPECT_TRUE(settings.enableList && settings.enableWave && settings.enableMcs);
}

TEST(ConfigurationPage, ItsNetworkSettingsAreReadAsTheyStand) {
  const test::LogCapture log;
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  const auto blocks = page.BlocksOf(QStringLiteral("json network"));
  ASSERT_EQ(blocks.size(), 1U);
  NetworkSettings settings;
  EXPECT_EQ(settings.Read(Parse(blocks.front())), QString());
  EXPECT_TRUE(log.Lines().isEmpty());
  EXPECT_EQ(settings.address, QHostAddress(QHostAddress::LocalHost));
  EXPECT_EQ(settings.origins, QStringList{"http://lab.example:8080"});
  EXPECT_EQ(settings.maxConnections, 100);
  EXPECT_EQ(settings.maxMessageBytes, 1'048'576);
  EXPECT_EQ(settings.maxUnsentBytes, 67'108'864);
}

TEST(ConfigurationPage, EveryBlockTypeHasASectionAPlaceInTheSchemaAndOneInTheDemo) {
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  const QJsonObject schema =
      Parse(test::MarkdownPage(QStringLiteral("configuration/korvax-configuration.schema.json")).Text());
  const QJsonArray types = schema["definitions"]
                               .toObject()["block"]
                               .toObject()["properties"]
                               .toObject()["block_type"]
                               .toObject()["enum"]
                               .toArray();
  QStringList inSchema;
  for (const QJsonValue& type : types) {
    inSchema << type.toString();
  }
  EXPECT_EQ(inSchema.join(QLatin1String(", ")).toStdString(), BlockFactory::KnownTypes().toStdString());
  QSet<QString> inDemo;
  const test::DemoChain demo;
  for (const auto& block : demo.Blocks()) {
    inDemo << block->BlockType();
  }
  for (const QString& type : BlockFactory::KnownTypes().split(QLatin1String(", "))) {
    EXPECT_TRUE(page.Text().contains(QStringLiteral("\n### `%1`\n").arg(type))) << qPrintable(type);
    EXPECT_TRUE(inDemo.contains(type)) << qPrintable(type);
  }
}

TEST(ConfigurationPage, EveryKeyAndParameterThatTheCodeReadsStandsOnThePage) {
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  const QSet<QString> keys = KeysInCode();
  EXPECT_GE(keys.size(), 40);
  const QString pages = page.Text() + test::MarkdownPage(QStringLiteral("docs/queries.md")).Text();
  for (const QString& key : keys) {
    EXPECT_TRUE(pages.contains(QLatin1Char('`') + key + QLatin1Char('`'))) << qPrintable(key);
  }
}

// The other way round: a row of a table that no code reads is a promise that nobody keeps.
TEST(ConfigurationPage, EveryKeyOfItsTablesIsReadByTheCode) {
  static const QRegularExpression row(QStringLiteral("^\\| ((?:`\\w+`(?:, )?)+) \\|"),
                                      QRegularExpression::MultilineOption);
  static const QRegularExpression name(QStringLiteral("`(\\w+)`"));
  const test::MarkdownPage page(QStringLiteral("docs/configuration.md"));
  const QSet<QString> keys = KeysInCode();
  int found = 0;
  for (auto rows = row.globalMatch(page.Text()); rows.hasNext();) {
    for (auto names = name.globalMatch(rows.next().captured(1)); names.hasNext(); ++found) {
      const QString key = names.next().captured(1);
      EXPECT_TRUE(keys.contains(key)) << qPrintable(key);
    }
  }
  EXPECT_GE(found, 40);
}

}  // namespace
