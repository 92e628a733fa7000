#include "configuration/ConfigurationSchema.h"
#include "tests/support/Json.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"
#include "tests/unit/configuration/Mutation.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <gtest/gtest.h>

namespace {

using korvax::JsonSchema;

// The whole schema with its references, as an editor or any other validator reads it.
const JsonSchema& WholeSchema() {
  static const JsonSchema schema(test::Object(korvax::ConfigurationSchemaText()));
  return schema;
}

QStringList GoodFiles() {
  QStringList files{QStringLiteral("tests/unit/configuration/complete.json")};
  for (const QString& name : QDir(QStringLiteral(KORVAX_PROJECT_DIR "/examples")).entryList({"*.json"})) {
    files << QStringLiteral("examples/") + name;
  }
  return files;
}

// Calls `visit` with each node of the schema that describes a key: its name, and the node.
template <typename Visit>
void ForEachKey(const QJsonValue& schema, Visit visit) {
  if (schema.isArray()) {
    for (const QJsonValue& part : schema.toArray()) {
      ForEachKey(part, visit);
    }
  }
  const QJsonObject node = schema.toObject();
  for (auto part = node.begin(); part != node.end(); ++part) {
    if (part.key() == QLatin1String("properties")) {
      const QJsonObject members = part.value().toObject();
      for (auto member = members.begin(); member != members.end(); ++member) {
        visit(member.key(), member.value().toObject());
      }
    }
    if (part.key() != QLatin1String("if")) {
      ForEachKey(part.value(), visit);
    }
  }
}

TEST(Schema, isDraftSevenAndAcceptedByTheValidator) {
  EXPECT_EQ(test::Object(korvax::ConfigurationSchemaText())["$schema"].toString(),
            QStringLiteral("http://json-schema.org/draft-07/schema#"));
  EXPECT_NO_THROW(WholeSchema());
}

TEST(Schema, shipsInTheProgramAsItStandsInTheFile) {
  EXPECT_EQ(korvax::ConfigurationSchemaText(),
            test::ProjectFile(QStringLiteral("configuration/korvax-configuration.schema.json")));
}

TEST(Schema, takesEveryExampleAndTheCheckFindsNothingInIt) {
  const QStringList files = GoodFiles();
  EXPECT_GE(files.size(), 3);
  for (const QString& file : files) {
    EXPECT_TRUE(WholeSchema().Accepts(test::ProjectConfiguration(file))) << qPrintable(file);
    EXPECT_EQ(test::Joined(test::FindingsIn(test::ProjectFile(file))), "") << qPrintable(file);
  }
}

TEST(Schema, describesEveryKeyInASentenceOfItsOwn) {
  int keys = 0;
  ForEachKey(test::Object(korvax::ConfigurationSchemaText()), [&](const QString& key, const QJsonObject& node) {
    const bool isNarrowed =
        !node.contains("type") && !node.contains("description");  // beside a general description
    if (node.contains("$ref") || isNarrowed) {
      return;
    }
    ++keys;
    EXPECT_TRUE(node["description"].toString().endsWith(QLatin1Char('.'))) << qPrintable(key);
    EXPECT_TRUE(node.contains("type") || key == "param_value") << qPrintable(key);
  });
  EXPECT_GE(keys, 80);
}

TEST(Schema, givesADefaultForEveryKeyThatMayBeLeftOut) {
  const QSet<QString> required{"storage", "Hardware", "file_path", "block_type", "param_value"};
  ForEachKey(test::Object(korvax::ConfigurationSchemaText()), [&](const QString& key, const QJsonObject& node) {
    if (node.contains("type") && !required.contains(key)) {
      EXPECT_TRUE(node.contains("default") || node["enum"].isArray()) << qPrintable(key);
    }
  });
}

// The complete file is what the generated faults are made of: a key that it lacks would go untested.
TEST(Schema, everyKeyOfItStandsInTheCompleteFile) {
  const QJsonObject complete =
      test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
  QSet<QString> used;
  for (const QStringList& path : test::AllPaths(complete)) {
    used << path.last();
    used << test::At(complete, path)["param_name"].toString();
  }
  ForEachKey(test::Object(korvax::ConfigurationSchemaText()), [&](const QString& key, const QJsonObject& node) {
    EXPECT_TRUE(used.contains(key)) << qPrintable(key);
    for (const QJsonValue& name : key == "param_name" ? node["enum"].toArray() : QJsonArray()) {
      EXPECT_TRUE(used.contains(name.toString())) << qPrintable(name.toString());
    }
  });
}

TEST(Schema, theWalkAlongItFindsAFaultWhereverTheWholeSchemaRefusesAndNowhereElse) {
  test::Mutation mutation(test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json")));
  int refused = 0;
  for (int i = 0; i < 1000; ++i) {
    const QJsonObject mutated = mutation.Next();
    QStringList faults;
    for (const QString& line : test::SchemaFindingsIn(test::Text(mutated))) {
      if (!line.contains(QLatin1String("expected a key that the server knows"))) {
        faults << line;
      }
    }
    const bool accepted = WholeSchema().Accepts(mutated);
    refused += accepted ? 0 : 1;
    ASSERT_EQ(accepted, faults.isEmpty()) << test::Joined(faults) << test::Text(mutated).toStdString();
  }
  EXPECT_GT(refused, 300);
  EXPECT_LT(refused, 990);
}

}  // namespace
