#include "tests/support/Json.h"
#include "tests/system/ChainText.h"
#include "tests/system/DemoFixture.h"

#include <QProcess>

namespace test {

namespace {

constexpr const char* ShapesOfTheDemo = R"({
  "source0": {"board": "BOARD0", "endpoint": "energy", "data_type": "energy"},
  "tee0": {},
  "spectrum0": {"channels": 256, "bins": 2048, "gain": 0.25},
  "image0": {"rows": 16, "columns": 16},
  "dumper0": {},
  "source1": {"board": "BOARD1", "endpoint": "energy", "data_type": "energy"},
  "tee1": {},
  "spectrum1": {"channels": 32, "bins": 2048, "gain": 0.25},
  "dumper1": {},
  "sorter1": {},
  "groups1": {},
  "position1": {"rows": 64, "columns": 16},
  "times1": {"channels": 32, "bins": 600, "binning": 1000000000},
  "pairs_source1": {"board": "BOARD1", "endpoint": "energy_pair", "data_type": "energy_pair"},
  "pairs1": {"channels": 32, "bins": 2048, "gain": 0.25},
  "waves_source1": {"board": "BOARD1", "endpoint": "waveform", "data_type": "waveform"},
  "scope1": {"channels": 32, "analog": 1, "digital": 3, "samples": 512},
  "rates_source1": {"board": "BOARD1", "endpoint": "rate_counters", "data_type": "rate_counters"},
  "rates1": {"channels": ["Strip0a", "Strip0b", "Strip1a", "Strip1b", "Strip2a", "Strip2b", "Strip3a", "Strip3b",
                          "Strip4a", "Strip4b", "Strip5a", "Strip5b", "Strip6a", "Strip6b", "Strip7a", "Strip7b",
                          "Strip8a", "Strip8b", "Strip9a", "Strip9b", "Strip10a", "Strip10b", "Strip11a",
                          "Strip11b", "Strip12a", "Strip12b", "Strip13a", "Strip13b", "Strip14a", "Strip14b",
                          "Strip15a", "Strip15b", "T0"]},
  "hv1": {"board": "BOARD1"}
})";

struct DemoBlock {
  const char* type;
  const char* name;
  const char* chain;  // empty where the path isn't made of it
  const char* from;   // empty for a block without inputs
  int pin;
  int outputs;
};

constexpr DemoBlock BlocksOfTheDemo[] = {
    {"source", "source0", "board0", "", 0, 1},
    {"tee", "tee0", "board0", "source0", 0, 3},
    {"spectrum", "spectrum0", "board0", "tee0", 0, 0},
    {"image", "image0", "board0", "tee0", 1, 0},
    {"dumper", "dumper0", "board0", "tee0", 2, 0},
    {"source", "source1", "board1", "", 0, 1},
    {"tee", "tee1", "board1", "source1", 0, 3},
    {"spectrum", "spectrum1", "board1", "tee1", 0, 0},
    {"dumper", "dumper1", "board1", "tee1", 1, 0},
    {"time_sorting", "sorter1", "board1", "tee1", 2, 1},
    {"tee", "groups1", "board1", "sorter1", 0, 2},
    {"position", "position1", "board1", "groups1", 0, 0},
    {"tof_histogram", "times1", "board1", "groups1", 1, 0},
    {"source", "pairs_source1", "pairs1", "", 0, 1},
    {"spectrum", "pairs1", "pairs1", "pairs_source1", 0, 0},
    {"source", "waves_source1", "scope1", "", 0, 1},
    {"oscilloscope", "scope1", "scope1", "waves_source1", 0, 0},
    {"source", "rates_source1", "rates1", "", 0, 1},
    {"rate_counters_sink", "rates1", "rates1", "rates_source1", 0, 0},
    {"hv", "hv1", "", "", 0, 0},
};

QJsonArray ExpectedOfTheDemo() {
  const QJsonObject shapes = Object(ShapesOfTheDemo);
  QJsonArray expected;
  for (const DemoBlock& block : BlocksOfTheDemo) {
    QJsonArray links;
    if (*block.from != '\0') {
      links << QJsonObject{{"from", block.from}, {"pin", block.pin}};
    }
    const QString path = QStringLiteral("processing/0/filter_chain/%1/chain/%2");
    expected << QJsonObject{
        {"type", block.type},
        {"name", block.name},
        {"path", *block.chain == '\0' ? QStringLiteral("Hardware/BOARD1") : path.arg(block.chain, block.name)},
        {"links", links},
        {"outputs", block.outputs},
        {"shape", shapes[QLatin1String(block.name)]}};
  }
  return expected;
}

// The list of what the configuration made.
class BlocksTest : public DemoFixture {
protected:
  QJsonArray Blocks() { return Object(Command("get_blocks").toUtf8())["blocks"].toArray(); }
};

TEST_F(BlocksTest, OfTheDemoAreAllThatStandInItsFile) {
  ConfigureDemo(Form::Binary);
  StartAndWaitUntilReady();
  const QJsonArray blocks = Blocks();
  const QJsonArray expected = ExpectedOfTheDemo();
  ASSERT_EQ(blocks.size(), expected.size());
  for (int i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(blocks[i], expected[i]) << QJsonDocument(blocks[i].toObject()).toJson().toStdString();
  }
}

TEST_F(BlocksTest, OfTheDemoAreShownByTheClient) {
  ConfigureDemo(Form::Binary);
  StartAndWaitUntilReady();
  const auto client = [](const QStringList& words) {
    QProcess process;
    process.start(QStringLiteral(KORVAXCTL), words);
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
  };
  EXPECT_EQ(Object(client({"blocks", "--json"}))["blocks"].toArray(), ExpectedOfTheDemo());
  const QList<QByteArray> lines = client({"blocks"}).split('\n');
  ASSERT_EQ(lines.size(), 1 + 20 + 1);
  EXPECT_EQ(lines[13].simplified(),
            QByteArray("times1 tof_histogram processing/0/filter_chain/board1/chain/times1 "
                       "groups1:1 binning 1000000000, bins 600, channels 32"));
}

TEST_F(BlocksTest, ThatAreNotLinkedOrShareANameAreListedAsTheyStand) {
  QJsonObject unlinked = SpectrumBlock("odd \"name\"\n", "nobody", "0");
  unlinked.insert("input_count", 0);
  configuration = WithChain(configuration, {Tee("twin", "source", 1), Tee("twin", "twin", 2),
                                            SpectrumBlock("spectrum", "twin", "0"), unlinked});
  StartAndWaitUntilReady();
  const QJsonArray blocks = Blocks();
  ASSERT_EQ(blocks.size(), 5);
  EXPECT_EQ(blocks[2].toObject()["links"], Array(R"([{"from": "twin", "pin": 0}])"));
  EXPECT_EQ(blocks[2].toObject()["outputs"], 2);
  EXPECT_EQ(blocks[3].toObject()["links"], Array(R"([{"from": "twin", "pin": 0}])")) << "the first of the name";
  EXPECT_EQ(blocks[4].toObject()["name"], "odd \"name\"\n");
  EXPECT_EQ(blocks[4].toObject()["links"], Array(R"([{"from": "", "pin": 0}])"));
  const QString one = Tell("commands", R"({"cmd":"get_blocks","block":"twin"})");
  EXPECT_EQ(Object(one.toUtf8())["blocks"].toArray().size(), 2);
}

}  // namespace

}  // namespace test
