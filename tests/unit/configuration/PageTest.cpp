#include "configuration/ConfigurationSchema.h"
#include "tests/support/Json.h"
#include "tests/unit/configuration/CheckText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace {

/// A section of docs/configuration.md: the text in backticks of its heading, or the heading, and its tables' keys.
struct Section {
  QString heading;
  QSet<QString> keys;
};

std::vector<Section> Sections() {
  static const QRegularExpression heading(QStringLiteral("^##+ (.*)$"));
  static const QRegularExpression row(QStringLiteral("^\\| ((?:`\\w+`(?:, )?)+) \\|"));
  static const QRegularExpression name(QStringLiteral("`(\\w+)`"));
  std::vector<Section> sections{{}};
  for (const QString& line : QString::fromUtf8(test::ProjectFile("docs/configuration.md")).split('\n')) {
    const auto title = heading.match(line);
    const auto keys = row.match(line);
    if (title.hasMatch()) {
      const auto quoted = QRegularExpression(QStringLiteral("^`(\\w+)`")).match(title.captured(1));
      sections.push_back({quoted.hasMatch() ? quoted.captured(1) : title.captured(1), {}});
    } else if (keys.hasMatch()) {
      for (auto names = name.globalMatch(keys.captured(1)); names.hasNext();) {
        sections.back().keys << names.next().captured(1);
      }
    }
  }
  return sections;
}

QJsonObject Definition(const QString& name) {
  return test::Object(korvax::ConfigurationSchemaText())["definitions"].toObject()[name].toObject();
}

QSet<QString> KeysOf(const QJsonObject& node) {
  const QStringList keys = node["properties"].toObject().keys();
  return {keys.begin(), keys.end()};
}

// What belongs to this type of block alone: its parameters, and a tee's number of outputs.
QSet<QString> KeysOfBlock(const QString& type) {
  const QJsonObject block = Definition(type);
  QSet<QString> keys = KeysOf(block) & QSet<QString>{"output_count"};
  for (const QJsonValue& part : block.value("properties")["parameters"]["items"]["allOf"].toArray()) {
    const QString name = part.toObject().value("if")["properties"]["param_name"]["const"].toString();
    keys += name.isEmpty() ? QSet<QString>() : QSet<QString>{name};
  }
  return keys;
}

QStringList Sorted(const QSet<QString>& keys) {
  QStringList sorted(keys.begin(), keys.end());
  sorted.sort();
  return sorted;
}

QSet<QString> BlockTypes() {
  QSet<QString> types;
  for (const QJsonValue& type :
       Definition(QStringLiteral("block")).value("properties")["block_type"]["enum"].toArray()) {
    types << type.toString();
  }
  return types;
}

TEST(ConfigurationPage, andTheSchemaNameTheSameKeysOnEveryLevel) {
  QMap<QString, QSet<QString>> levels{{"Top level", KeysOf(test::Object(korvax::ConfigurationSchemaText()))},
                                      {"storage", KeysOf(Definition("storage"))},
                                      {"network", KeysOf(Definition("network"))},
                                      {"A board: one entry of `Hardware`", KeysOf(Definition("board"))},
                                      {"elements", KeysOf(Definition("element"))},
                                      {"endpoints", KeysOf(Definition("endpoint"))},
                                      {"commands", KeysOf(Definition("command"))},
                                      {"processing", KeysOf(Definition("block")) - QSet<QString>{"output_count"}}};
  for (const Section& section : Sections()) {
    if (levels.contains(section.heading)) {
      EXPECT_EQ(test::Joined(Sorted(section.keys)), test::Joined(Sorted(levels.take(section.heading))))
          << qPrintable(section.heading);
    }
  }
  EXPECT_EQ(test::Joined(levels.keys()), "") << "sections that the page lacks";
}

TEST(ConfigurationPage, andTheSchemaNameTheSameParametersOfEveryBlock) {
  QSet<QString> types = BlockTypes();
  EXPECT_EQ(types.size(), 11);
  for (const Section& section : Sections()) {
    if (types.remove(section.heading)) {
      EXPECT_EQ(test::Joined(Sorted(section.keys)), test::Joined(Sorted(KeysOfBlock(section.heading))))
          << qPrintable(section.heading);
    }
  }
  EXPECT_EQ(test::Joined(Sorted(types)), "") << "blocks that the page lacks";
}

// Levels without a table of their own stand in the text.
TEST(ConfigurationPage, namesTheKeysOfAllOtherLevels) {
  const QString page = QString::fromUtf8(test::ProjectFile("docs/configuration.md"));
  for (const char* level : {"config", "group", "chain", "parameter"}) {
    for (const QString& key : KeysOf(Definition(level))) {
      EXPECT_TRUE(page.contains('`' + key + '`')) << qPrintable(key);
    }
  }
}

QJsonArray Fenced(const QString& kind) {
  const QString page = QString::fromUtf8(test::ProjectFile("docs/configuration.md"));
  const QRegularExpression fence(
      "^```json " + kind + "\\n(.*?)^```",
      QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
  QJsonArray blocks;
  for (auto matches = fence.globalMatch(page); matches.hasNext();) {
    blocks.append(test::Object(matches.next().captured(1).toUtf8()));
  }
  return blocks;
}

TEST(ConfigurationPage, itsExamplesAreAConfigurationWithoutErrors) {
  const QJsonArray blocks = Fenced("block");
  EXPECT_GE(blocks.size(), 11);
  const QJsonObject chain{{"enable", true}, {"name", "page"}, {"chain", blocks}};
  const QJsonObject whole{{"storage", Fenced("storage")[0]},
                          {"network", Fenced("network")[0]},
                          {"Hardware", Fenced("board")},
                          {"processing", QJsonArray{QJsonObject{{"filter_chain", QJsonArray{chain}}}}}};
  for (const QString& finding : test::FindingsIn(QJsonDocument(whole).toJson())) {
    EXPECT_FALSE(finding.contains(": error: ")) << qPrintable(finding);
  }
}

}  // namespace
