#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "server/BlockFactory.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QSet>

namespace {

// On two boards "det" and "other", each with an endpoint "energy".
class BlockShapes : public testing::Test {
protected:
  BlockShapes() {
    for (const char* name : {"det", "other"}) {
      boards.push_back(std::make_unique<DigitizerBoard>(vendor.Lookup()));
      boards.back()->name = name;
      boards.back()->LoadEndpoints(test::Object(R"({"endpoints": [{"name": "energy"}]})"));
    }
  }

  std::unique_ptr<KorvaxBlock> Make(const char* type, const QByteArray& keys) const {
    return BlockFactory::Create(type, {&boards, &blocks, "processing/0/x", ""}, test::Object("{" + keys + "}"));
  }
  // The entries of a block's "parameters", with names and values as JSON.
  static QByteArray Parameters(const std::vector<std::pair<QByteArray, QByteArray>>& values) {
    QByteArray entries;
    for (const auto& [name, value] : values) {
      entries += (entries.isEmpty() ? "" : ",") + QByteArray(R"({"param_name":")") + name + R"(","param_value":)" +
                 value + "}";
    }
    return R"("parameters":[)" + entries + "]";
  }

  test::FakeVendor vendor;
  test::LogCapture log;
  BoardList boards;
  BlockList blocks;
};

struct ShapeRow {
  const char* type;
  QByteArray keys;
  const char* shape;
};

TEST_F(BlockShapes, OfEveryTypeAreWhatItWorksWith) {
  const ShapeRow rows[] = {
      {"spectrum", Parameters({{"ch_number", "4"}, {"bin_number", "1024"}, {"gain", "0.25"}}),
       R"({"channels": 4, "bins": 1024, "gain": 0.25})"},
      {"tof_histogram", Parameters({{"ch_number", "3"}, {"bin_number", "600"}, {"binning", "1000000000"}}),
       R"({"channels": 3, "bins": 600, "binning": 1000000000})"},
      {"position", Parameters({{"positions", "[0,0,1,1,2]"}, {"y_positions", "64"}}),
       R"({"rows": 64, "columns": 2})"},
      {"image", Parameters({{"x_positions", "[7,7,7]"}, {"y_positions", "[0,1]"}}),
       R"({"rows": 2, "columns": 3})"},
      {"oscilloscope",
       Parameters({{"sample_number", "512"}, {"ch_number", "32"}, {"ch_analog", "1"}, {"ch_digital", "3"}}),
       R"({"channels": 32, "analog": 1, "digital": 3, "samples": 512})"},
      {"rate_counters_sink", Parameters({{"channel_map", R"(["a\"b", 5, "T0"])"}}),
       R"({"channels": ["a\"b", "", "T0"]})"},
      {"source", R"("data_type": "waveform", "sources": [{"source": "other", "pin": "endpoints\\energy"}])",
       R"({"board": "other", "endpoint": "energy", "data_type": "waveform"})"},
      {"hv", R"("sources": [{"source": "det"}])", R"({"board": "det"})"},
      {"tee", R"("output_count": 3)", "{}"},
      {"time_sorting", Parameters({{"group_time", "100"}}), "{}"},
      {"dumper", "", "{}"},
  };
  QSet<QString> types;
  for (const ShapeRow& row : rows) {
    EXPECT_EQ(Make(row.type, row.keys)->Shape(), test::Object(row.shape)) << row.type;
    types << row.type;
  }
  const QStringList known = BlockFactory::KnownTypes().split(", ");
  EXPECT_EQ(types, QSet<QString>(known.begin(), known.end()));
}

TEST_F(BlockShapes, OfBlocksWithoutParametersAreTheirDefaults) {
  const ShapeRow rows[] = {
      {"spectrum", "", R"({"channels": 0, "bins": 0, "gain": 1})"},
      {"tof_histogram", "", R"({"channels": 0, "bins": 0, "binning": 0})"},
      {"position", "", R"({"rows": 256, "columns": 0})"},
      {"image", "", R"({"rows": 0, "columns": 0})"},
      {"oscilloscope", "", R"({"channels": 0, "analog": 0, "digital": 0, "samples": 0})"},
      {"rate_counters_sink", "", R"({"channels": []})"},
      {"source", "", R"({"board": "", "endpoint": "", "data_type": ""})"},
      {"hv", "", R"({"board": ""})"},
  };
  for (const ShapeRow& row : rows) {
    EXPECT_EQ(Make(row.type, row.keys)->Shape(), test::Object(row.shape)) << row.type;
  }
}

TEST_F(BlockShapes, OfOddParametersAreWhatBecomesOfThem) {
  const ShapeRow rows[] = {
      {"spectrum", Parameters({{"ch_number", "-4"}, {"bin_number", "8"}, {"gain", "-2.5"}}),
       R"({"channels": 0, "bins": 8, "gain": -2.5})"},
      {"spectrum", Parameters({{"ch_number", "\"4\""}, {"bin_number", "8.5"}, {"gain", "\"2\""}}),
       R"({"channels": 0, "bins": 0, "gain": 0})"},
      {"spectrum", Parameters({{"ch_number", "4"}, {"ch_number", "2"}, {"bin_number", "8"}}),
       R"({"channels": 2, "bins": 8, "gain": 1})"},
      {"tof_histogram", Parameters({{"ch_number", "4"}, {"bin_number", "-1"}, {"binning", "0.5"}}),
       R"({"channels": 4, "bins": 0, "binning": 0.5})"},
      {"position", Parameters({{"positions", "[0]"}, {"y_positions", "-64"}}), R"({"rows": 0, "columns": 0})"},
      {"image", Parameters({{"x_positions", "5"}, {"y_positions", "[0,1]"}}), R"({"rows": 2, "columns": 0})"},
      {"oscilloscope",
       Parameters({{"sample_number", "-1"}, {"ch_number", "2"}, {"ch_analog", "-1"}, {"ch_digital", "3.5"}}),
       R"({"channels": 2, "analog": 0, "digital": 0, "samples": 0})"},
      {"rate_counters_sink", Parameters({{"channel_map", "\"T0\""}}), R"({"channels": []})"},
      {"source", R"("data_type": "energy", "sources": [{"source": "nobody", "pin": "endpoints\\energy"}])",
       R"({"board": "", "endpoint": "", "data_type": "energy"})"},
      {"source", R"("data_type": 5, "sources": [{"source": "det", "pin": "endpoints\\wave"}])",
       R"({"board": "", "endpoint": "", "data_type": ""})"},
      {"hv", R"("sources": [{"source": "nobody"}])", R"({"board": ""})"},
      {"hv", R"("sources": [{"source": "det"}, {"source": "nobody"}])", R"({"board": "det"})"},
  };
  for (const ShapeRow& row : rows) {
    EXPECT_EQ(Make(row.type, row.keys)->Shape(), test::Object(row.shape)) << row.type << row.keys.toStdString();
  }
}

TEST_F(BlockShapes, FollowWhatALiveBlockTakesAndKeepWhatIsFixed) {
  const auto spectrum = Make("spectrum", Parameters({{"ch_number", "4"}, {"bin_number", "8"}}));
  spectrum->ParseParameters(
      test::Object("{" + Parameters({{"ch_number", "9"}, {"bin_number", "9"}, {"gain", "3"}}) + "}"));
  EXPECT_EQ(spectrum->Shape(), test::Object(R"({"channels": 4, "bins": 8, "gain": 3})"));

  const auto image = Make("image", Parameters({{"x_positions", "[0]"}, {"y_positions", "[0]"}}));
  image->ParseParameters(test::Object("{" + Parameters({{"x_positions", "[0,1]"}}) + "}"));
  EXPECT_EQ(image->Shape(), test::Object(R"({"rows": 1, "columns": 1})"));

  const auto position = Make("position", Parameters({{"positions", "[0,0]"}, {"y_positions", "4"}}));
  position->ParseParameters(
      test::Object("{" + Parameters({{"positions", "[0,0,1,1]"}, {"y_positions", "5"}}) + "}"));
  EXPECT_EQ(position->Shape(), test::Object(R"({"rows": 4, "columns": 1})"));

  const auto scope = Make("oscilloscope", Parameters({{"ch_number", "2"}, {"sample_number", "4"}}));
  scope->ParseParameters(test::Object("{" + Parameters({{"ch_number", "3"}}) + "}"));
  EXPECT_EQ(scope->Shape()["channels"], 2);
}

}  // namespace
