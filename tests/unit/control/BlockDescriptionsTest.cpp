#include "control/BlockDescriptions.h"
#include "tests/unit/control/AnsweringBlock.h"
#include "tests/unit/control/RunFixture.h"
#include "tests/unit/control/Station.h"

namespace {

class BlockDescriptions : public testing::Test {
protected:
  // Pins are read by the blocks behind theirs.
  ~BlockDescriptions() override {
    while (!blocks.empty()) {
      blocks.pop_back();
    }
  }

  Station& Add(const QString& name, int inputs, int outputs) {
    auto station = std::make_unique<Station>(name, inputs, outputs, std::vector<korvax::Fate>());
    Station& added = *station;
    blocks.push_back(std::move(station));
    return added;
  }

  QJsonArray All() const { return korvax::DescribeBlocks(blocks)["blocks"].toArray(); }
  QJsonValue LinksOf(int index) const { return All()[index].toObject()["links"]; }
  static QStringList NamesIn(const QJsonObject& description) {
    QStringList names;
    for (const QJsonValue& block : description["blocks"].toArray()) {
      names << block["name"].toString();
    }
    return names;
  }

  BlockList blocks;
};

TEST_F(BlockDescriptions, OfNoBlocksAreAnEmptyList) {
  EXPECT_EQ(korvax::DescribeBlocks({}), test::Object(R"({"blocks": []})"));
}

TEST_F(BlockDescriptions, HaveExactlyTheseKeys) {
  const Station& source = Add("source", 0, 1);
  Station& filter = Add("filter", 1, 2);
  Add("sink", 1, 0).LinkTo(filter, 1);
  filter.LinkTo(source);
  EXPECT_EQ(korvax::DescribeBlocks(blocks), test::Object(R"({"blocks": [
    {"type": "station", "name": "source", "path": "path/of/source", "links": [], "outputs": 1, "shape": {}},
    {"type": "station", "name": "filter", "path": "path/of/filter", "links": [{"from": "source", "pin": 0}],
     "outputs": 2, "shape": {}},
    {"type": "station", "name": "sink", "path": "path/of/sink", "links": [{"from": "filter", "pin": 1}],
     "outputs": 0, "shape": {}}]})"));
}

TEST_F(BlockDescriptions, HaveALinkForEachInputWhetherItIsLinkedOrNot) {
  const Station& source = Add("source", 0, 2);
  Station& join = Add("join", 3, 0);
  join.LinkTo(source, 1, 0);
  join.LinkTo(source, 0, 2);
  EXPECT_EQ(LinksOf(1), test::Array(R"([{"from": "source", "pin": 1}, {"from": "", "pin": 0},
                                        {"from": "source", "pin": 0}])"));
}

TEST_F(BlockDescriptions, HaveAnEmptyNameForAPinOfNoBlock) {
  PinOutput stray("energy");
  Add("lonely", 1, 0).Inputs().front()->Connect(&stray);
  EXPECT_EQ(LinksOf(0), test::Array(R"([{"from": "", "pin": 0}])"));
}

TEST_F(BlockDescriptions, TellOfTwoConsumersOfOneOutput) {
  const Station& source = Add("source", 0, 1);
  Add("first", 1, 0).LinkTo(source);
  Add("second", 1, 0).LinkTo(source);
  EXPECT_EQ(LinksOf(1), test::Array(R"([{"from": "source", "pin": 0}])"));
  EXPECT_EQ(LinksOf(2), test::Array(R"([{"from": "source", "pin": 0}])"));
}

TEST_F(BlockDescriptions, HoldBlocksWithoutPinsButNotRunControl) {
  blocks.push_back(std::make_unique<SilentBlock>("hv", "hv 1", "Hardware/b"));
  blocks.push_back(std::make_unique<AnsweringBlock>("commands", "commands", ""));
  Add("commands", 0, 0);
  EXPECT_EQ(NamesIn(korvax::DescribeBlocks(blocks)), QStringList({"hv 1", "commands"})) << "the type decides";
  EXPECT_EQ(All()[0].toObject(), test::Object(R"({"type": "hv", "name": "hv 1", "path": "Hardware/b",
                                                  "links": [], "outputs": 0, "shape": {}})"));
}

TEST_F(BlockDescriptions, OfAnyNameAreReadAsTheyStand) {
  const QStringList names{"", " ", "a\"b\\c", "line\nline", QString(QChar(0)), "σ😀", "{}", "commands"};
  for (const QString& name : names) {
    Station& station = Add(name, 1, 1);
    station.LinkTo(station);
  }
  const QByteArray text = QJsonDocument(korvax::DescribeBlocks(blocks)).toJson(QJsonDocument::Compact);
  const QJsonObject read = test::Object(text);
  EXPECT_EQ(NamesIn(read), names);
  for (int i = 0; i < names.size(); ++i) {
    const QJsonObject block = read["blocks"].toArray()[i].toObject();
    EXPECT_EQ(block["links"].toArray()[0].toObject()["from"].toString(), names[i]);
    EXPECT_EQ(block["path"].toString(), "path/of/" + names[i]);
  }
}

TEST_F(BlockDescriptions, OfOneNameAreOfAllBlocksThatHaveIt) {
  const Station& source = Add("source", 0, 1);
  Add("twin", 1, 0).LinkTo(source);
  Add("twin", 1, 0);
  EXPECT_EQ(NamesIn(korvax::DescribeBlocks(blocks, "twin")), QStringList({"twin", "twin"}));
  const QJsonArray twins = korvax::DescribeBlocks(blocks, "twin")["blocks"].toArray();
  EXPECT_EQ(twins[0].toObject()["links"], test::Array(R"([{"from": "source", "pin": 0}])")) << "links stay named";
  EXPECT_EQ(NamesIn(korvax::DescribeBlocks(blocks, "Twin")), QStringList());
  EXPECT_EQ(NamesIn(korvax::DescribeBlocks(blocks, "")), QStringList());
}

class GetBlocks : public RunFixture {
protected:
  static constexpr const char* First =
      R"({"links":[],"name":"s1","outputs":1,"path":"processing/0/x",)"
      R"("shape":{"board":"det","data_type":"energy","endpoint":"one"},"type":"source"})";
  static constexpr const char* Second =
      R"({"links":[],"name":"s2","outputs":1,"path":"processing/0/x",)"
      R"("shape":{"board":"det","data_type":"energy","endpoint":"two"},"type":"source"})";
};

TEST_F(GetBlocks, AnswersWithAllBlocksAndTouchesNone) {
  EXPECT_EQ(Tell(R"({"cmd": "get_blocks"})"), std::string(R"({"blocks":[)") + First + "," + Second + "]}");
  EXPECT_TRUE(vendor.Calls().isEmpty());
}

TEST_F(GetBlocks, AnswersWithTheBlockThatIsNamed) {
  const std::string second = std::string(R"({"blocks":[)") + Second + "]}";
  EXPECT_EQ(Tell(R"({"cmd": "get_blocks", "block": "s2"})"), second);
  for (const char* other : {R"("nobody")", R"("commands")", R"("")", "2", "null", R"(["s2"])", "{}"}) {
    EXPECT_EQ(Tell(QStringLiteral(R"({"cmd": "get_blocks", "block": %1})").arg(other)), R"({"blocks":[]})")
        << other;
  }
}

}  // namespace
