#include "tests/system/ChainText.h"
#include "tests/system/SystemTest.h"

namespace test {

namespace {

struct BlockFault {
  const char* name;
  QJsonArray blocks;  // behind the source
  const char* block;  // the one that is refused
  const char* key;    // and where
};

void PrintTo(const BlockFault& value, std::ostream* out) {
  *out << value.name;
}

// Chains with tees, sorters, maps and images that are wired wrongly.
class BlockFaultTest : public SystemTest, public testing::WithParamInterface<BlockFault> {};

TEST_P(BlockFaultTest, EndsTheServerInALineThatNamesBlockAndKey) {
  configuration = WithChain(configuration, GetParam().blocks);
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  const QString line = server.ErrorLines().last();
  const QString beginning = QStringLiteral(R"(Processing group 0, chain "main", block "%1", %2: expected )")
                                .arg(QLatin1String(GetParam().block), QLatin1String(GetParam().key));
  EXPECT_TRUE(line.startsWith(beginning)) << line.toStdString() << "\n" << beginning.toStdString();
  EXPECT_EQ(board.CallsOf(QStringLiteral("command")), QStringList()) << "a board was armed";
}

QJsonObject Sorter(const char* source, const QJsonValue& pin) {
  return Block("time_sorting", "sorter", source, pin);
}

QJsonObject WithTwoInputs(QJsonObject block) {
  QJsonArray sources = block["sources"].toArray();
  sources << sources[0];
  block.insert("sources", sources);
  block.insert("input_count", 2);
  return block;
}

QJsonArray EveryPosition(int count) {
  QJsonArray positions;
  for (int i = 0; i < count; ++i) {
    positions << i;
  }
  return positions;
}

std::vector<BlockFault> Faults() {
  const char* const type = R"(key "block_type")";
  const char* const source = R"(key "sources"[0]."source")";
  const char* const pin = R"(key "sources"[0]."pin")";
  const char* const inputs = R"(key "input_count")";
  const QJsonObject tee = Tee("tee", "source", 2);
  return {
      {"TeeInAnotherLetterCase", {Block("Tee", "tee", "source", "0")}, "tee", type},
      {"SorterByItsClass", {Block("Process_Time_Sorting", "sorter", "source", "0")}, "sorter", type},
      {"TimesByTheirClass", {Block("time_distribution", "times", "source", "0")}, "times", type},
      {"TypeWithABlank", {Block("position ", "position", "source", "0")}, "position", type},

      {"TeeOfNobody", {Tee("tee", "nobody", 2)}, "tee", source},
      {"SorterOfNobody", {Sorter("nobody", "0")}, "sorter", source},
      {"PositionOfNobody", {PositionBlock("nobody", "0")}, "position", source},
      {"ImageOfNobody", {ImageBlock("nobody", "0")}, "image", source},
      {"TimesOfNobody", {TimesBlock("nobody", "0")}, "times", source},
      {"TeeOfItself", {Tee("tee", "tee", 2)}, "tee", source},
      {"SorterBeforeItsTee", {Sorter("tee", "0"), tee}, "sorter", source},
      {"TeeBeforeItsSorter", {Tee("tee", "sorter", 2), Sorter("source", "0")}, "tee", source},

      {"PinBehindTheLastOfATee", {tee, Sorter("tee", "2")}, "sorter", pin},
      {"PinBeforeTheFirstOfATee", {tee, Sorter("tee", "-1")}, "sorter", pin},
      {"SecondPinOfASorter", {Sorter("source", "0"), ImageBlock("sorter", "1")}, "image", pin},
      {"PinOfAPosition", {PositionBlock("source", "0"), ImageBlock("position", "0")}, "image", pin},
      {"PinOfAnImage", {ImageBlock("source", "0"), PositionBlock("image", "0")}, "position", pin},
      {"PinOfTimes", {TimesBlock("source", "0"), PositionBlock("times", "0")}, "position", pin},
      {"PinOfATeeWithoutOutputs", {Tee("tee", "source", 0), ImageBlock("tee", "0")}, "image", pin},
      {"PinOfATeeWithLessThanNoOutputs", {Tee("tee", "source", -3), ImageBlock("tee", "0")}, "image", pin},
      {"PinOfATeeWhoseCountIsAText", {Tee("tee", "source", "2"), ImageBlock("tee", "0")}, "image", pin},
      {"PinOfATeeWhoseCountIsAList", {Tee("tee", "source", QJsonArray{2}), ImageBlock("tee", "0")}, "image", pin},

      {"TeeWithTwoInputs", {WithTwoInputs(tee)}, "tee", inputs},
      {"SorterWithTwoInputs", {WithTwoInputs(Sorter("source", "0"))}, "sorter", inputs},
      {"PositionWithTwoInputs", {WithTwoInputs(PositionBlock("source", "0"))}, "position", inputs},
      {"ImageWithTwoInputs", {WithTwoInputs(ImageBlock("source", "0"))}, "image", inputs},
      {"TimesWithTwoInputs", {WithTwoInputs(TimesBlock("source", "0"))}, "times", inputs},

      {"ATeeOfTooManyOutputs", {Tee("tee", "source", 2147483647)}, "tee", R"(key "output_count")"},
      {"TimesOfTooManyBins",
       {WithParameters(Block("tof_histogram", "times", "source", "0"),
                       {{"bin_number", 2147483647}, {"ch_number", 64}})},
       "times",
       R"("ch_number" times "bin_number")"},
      {"AMapOfTooManyRows",
       {WithParameters(Block("position", "position", "source", "0"),
                       {{"positions", QJsonArray{0, 0, 1, 1}}, {"y_positions", 2147483647}})},
       "position",
       R"("y_positions" times half the entries of "positions")"},
      {"AnImageOfTooManyPixels",
       {WithParameters(Block("image", "image", "source", "0"),
                       {{"x_positions", EveryPosition(20'000)}, {"y_positions", EveryPosition(20'000)}})},
       "image",
       R"(entries of "y_positions" times those of "x_positions")"},
  };
}

std::string NameOf(const testing::TestParamInfo<BlockFault>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(EveryFault, BlockFaultTest, testing::ValuesIn(Faults()), NameOf);

}  // namespace

}  // namespace test
