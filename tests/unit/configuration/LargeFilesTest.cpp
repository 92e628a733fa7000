#include "configuration/FindingList.h"
#include "configuration/Words.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

constexpr int Many = 20'000;

QString Name(const char* stem, int number) {
  return QLatin1String(stem) + QString::number(number);
}

QJsonObject Board(const QString& name) {
  const QJsonObject good = test::ProjectConfiguration("tests/unit/configuration/complete.json");
  return {{"enable", true},
          {"board_name", name},
          {"board_plugin", good["Hardware"].toArray()[0].toObject()["board_plugin"]},
          {"board_connection_string", "x"},
          {"endpoints", QJsonArray()}};
}

/// What `element` makes of each number below `count`.
template <typename Element>
QJsonArray Array(int count, Element element) {
  QJsonArray array;
  for (int i = 0; i < count; ++i) {
    array.append(element(i));
  }
  return array;
}

QJsonObject Configuration(const QJsonArray& boards, const QJsonArray& blocks) {
  const QJsonObject chain{{"name", "c"}, {"enable", true}, {"chain", blocks}};
  return {{"storage", QJsonObject{{"file_path", "runs"}}},
          {"Hardware", boards},
          {"processing", QJsonArray{QJsonObject{{"filter_chain", QJsonArray{chain}}}}}};
}

QJsonObject Linked(const char* type, const QString& name, const QString& source, const QString& pin) {
  return {{"block_type", type},
          {"name", name},
          {"data_type", "energy"},
          {"input_count", QLatin1String(type) == QLatin1String("source") ? 0 : 1},
          {"sources", QJsonArray{QJsonObject{{"source", source}, {"pin", pin}}}}};
}

korvax::CheckReport Checked(const QJsonObject& configuration) {
  return korvax::CheckConfiguration(test::Text(configuration));
}

// With a time that grew with the square of the number of names these would take minutes.
TEST(LargeFiles, ofEndpointsAndCommandsAreCheckedToTheEnd) {
  QJsonObject board = Board(QStringLiteral("B"));
  const auto endpoint = [](int i) { return QJsonObject{{"name", Name("endpoint", i / 2 * 2)}, {"enable", true}}; };
  const auto command = [](int i) {
    return QJsonObject{{"path", "p"}, {"command_type", "start"}, {"endpoint_type", Name("endpoimt", i)}};
  };
  board["endpoints"] = Array(Many, endpoint);
  board["commands"] = Array(Many, command);
  const korvax::CheckReport report = Checked(Configuration({board}, {}));
  EXPECT_EQ(report.errors, 0);
  EXPECT_EQ(report.warnings, Many / 2 + Many);
}

TEST(LargeFiles, ofBlocksWithBadSourcesAreCheckedToTheEnd) {
  const auto block = [](int i) { return Linked("dumper", Name("dumper", i), Name("bumper", i), "0"); };
  const korvax::CheckReport report = Checked(Configuration({Board("B")}, Array(Many, block)));
  EXPECT_EQ(report.errors, Many);
  EXPECT_EQ(report.warnings, 0);
}

TEST(LargeFiles, ofBlocksOfBadBoardsAreCheckedToTheEnd) {
  const auto board = [good = Board(QString())](int i) {
    QJsonObject named = good;
    named["board_name"] = Name("board", i);
    return named;
  };
  const auto block = [](int i) { return Linked("source", Name("s", i), Name("bord", i), "endpoints\\e"); };
  const korvax::CheckReport report = Checked(Configuration(Array(Many / 4, board), Array(Many / 4, block)));
  EXPECT_EQ(report.errors, 0);
  EXPECT_EQ(report.warnings, 2 * (Many / 4));  // nobody reads them either
}

TEST(LargeFiles, ofBlocksOfBadEndpointsAreCheckedToTheEnd) {
  QJsonObject board = Board(QStringLiteral("B"));
  board["endpoints"] = Array(Many / 4, [](int i) {
    return QJsonObject{{"name", Name("e", i)}, {"enable", true}};
  });
  const auto block = [](int i) { return Linked("source", Name("s", i), "B", Name("endpoints\\f", i)); };
  const korvax::CheckReport report = Checked(Configuration({board}, Array(Many / 4, block)));
  EXPECT_EQ(report.errors, 0);
  EXPECT_EQ(report.warnings, 2 * (Many / 4));
}

TEST(FindingList, asksForWordsOfFindingsThatAreKeptAlone) {
  const QJsonObject configuration;
  const korvax::PositionIndex positions("{}");
  korvax::FindingList findings(configuration, positions);
  int asked = 0;
  for (int i = 0; i < 1500; ++i) {
    findings.Fail({QString::number(i)}, QStringLiteral("a"), [&asked] { return QString::number(++asked); });
  }
  EXPECT_EQ(asked, 1000);
  EXPECT_EQ(findings.Report().errors, 1500);
  EXPECT_EQ(findings.Report().notShown, 500);
}

QStringList Candidates(int count) {
  QStringList candidates{QStringLiteral("energy")};
  while (candidates.size() < count) {
    candidates << Name("zzzzzzzzzzzz", candidates.size());
  }
  return candidates;
}

TEST(NearestText, givesUpAboveAHundredCandidates) {
  EXPECT_EQ(korvax::NearestText("enrgy", Candidates(100)), "energy");
  EXPECT_EQ(korvax::NearestText("enrgy", Candidates(101)), "");
}

TEST(NearestText, leavesTextsOutThatAreLongerThanWhatIsShown) {
  const QString shown(60, 'x');
  const QString longer(61, 'x');
  EXPECT_EQ(korvax::NearestText(shown, {longer}), "");
  EXPECT_EQ(korvax::NearestText(longer, {shown}), "");
  EXPECT_EQ(korvax::NearestText(shown.mid(1), {longer, shown}), shown);
}

// From a third of the letters on, but of a long text at most four.
TEST(NearestText, isNoTextThatDiffersInTooMuch) {
  EXPECT_EQ(korvax::NearestText("energy", {"ener"}), "ener");
  EXPECT_EQ(korvax::NearestText("energy", {"ene"}), "");
  EXPECT_EQ(korvax::NearestText("energy", {"enegy", "ENERGY"}), "ENERGY");
  EXPECT_EQ(korvax::NearestText(QString(30, 'x'), {QString(34, 'x')}), QString(34, 'x'));
  EXPECT_EQ(korvax::NearestText(QString(30, 'x'), {QString(35, 'x')}), "");
}

}  // namespace
