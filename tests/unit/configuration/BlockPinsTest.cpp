#include "configuration/BlockPins.h"
#include "configuration/ConfigurationSchema.h"
#include "tests/support/Json.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

TEST(BlockPins, areKnownForEveryBlockTypeOfTheSchema) {
  const QJsonObject definitions = test::Object(korvax::ConfigurationSchemaText())["definitions"].toObject();
  const QJsonObject keys = definitions["block"].toObject()["properties"].toObject();
  const QJsonArray types = keys["block_type"].toObject()["enum"].toArray();
  EXPECT_GE(types.size(), 11);
  for (const QJsonValue& type : types) {
    EXPECT_NE(korvax::PinsOf(type.toString()), nullptr) << type.toString().toStdString();
  }
}

TEST(BlockPins, areUnknownForOtherTypes) {
  EXPECT_EQ(korvax::PinsOf(QStringLiteral("sink")), nullptr);
  EXPECT_EQ(korvax::PinsOf(QString()), nullptr);
}

struct Row {
  const char* type;
  int inputs;
  int outputs;  // -1: "output_count"
  QStringList taken;
};

class PinsOfType : public testing::TestWithParam<Row> {};

TEST_P(PinsOfType, areThese) {
  const korvax::BlockPins* const pins = korvax::PinsOf(QLatin1String(GetParam().type));
  ASSERT_NE(pins, nullptr);
  EXPECT_EQ(pins->inputs, GetParam().inputs);
  EXPECT_EQ(pins->outputs, GetParam().outputs);
  EXPECT_EQ(pins->taken, GetParam().taken);
}

const QStringList Events{QStringLiteral("energy"), QStringLiteral("energy_pair")};

const Row Rows[] = {
    {"source", 0, 1, {}},
    {"time_sorting", 1, 1, Events},
    {"tee", 1, -1, {}},
    {"position", 1, 0, Events},
    {"image", 1, 0, Events},
    {"spectrum", 1, 0, Events},
    {"tof_histogram", 1, 0, Events},
    {"dumper", 1, 0, Events},
    {"oscilloscope", 1, 0, {"waveform"}},
    {"rate_counters_sink", 1, 0, {"rate_counters"}},
    {"hv", 0, 0, {}},
};

INSTANTIATE_TEST_SUITE_P(Types, PinsOfType, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.type); });

}  // namespace
