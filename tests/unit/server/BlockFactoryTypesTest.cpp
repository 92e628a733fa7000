#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "server/BlockFactory.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QMetaObject>

namespace {

struct TypeRow {
  const char* keyword;
  const char* className;
  std::size_t inputs, outputs;
  bool dumpCapable;
  bool answersQueries;
};

// Every type of block that a chain may have.
const TypeRow TypeRows[] = {
    {"source", "Source", 0, 1, false, false},
    {"time_sorting", "Process_Time_Sorting", 1, 1, false, false},
    {"tee", "Process_Tee", 1, 3, false, false},
    {"position", "Position", 1, 0, false, true},
    {"image", "Image", 1, 0, false, true},
    {"spectrum", "Histogram", 1, 0, false, true},
    {"tof_histogram", "time_distribution", 1, 0, false, true},
    {"dumper", "DataDumper", 1, 0, true, true},
    {"oscilloscope", "Oscilloscope", 1, 0, true, true},
    {"rate_counters_sink", "SinkRateCounter", 1, 0, true, true},
    {"hv", "HV", 0, 0, false, true},
};

class BlockFactoryType : public testing::TestWithParam<TypeRow> {};

TEST_P(BlockFactoryType, IsMadeAsItsOwnClassWithItsPins) {
  const TypeRow& row = GetParam();
  const BoardList boards;
  const BlockList blocks;
  const auto block =
      BlockFactory::Create(row.keyword, {&boards, &blocks, "processing/0/p", "c.json"},
                           test::Object(R"({"name": "n", "data_type": "energy", "output_count": 3})"));
  ASSERT_NE(block, nullptr);
  const QMetaObject* const meta = block->metaObject();
  EXPECT_STREQ(meta->className(), row.className);
  EXPECT_EQ(block->BlockType(), QString(row.keyword));
  EXPECT_EQ(block->Inputs().size(), row.inputs);
  EXPECT_EQ(block->Outputs().size(), row.outputs);
  EXPECT_EQ(block->IsDumpCapable(), row.dumpCapable);
  EXPECT_EQ(meta->indexOfSlot("NewDataInTheInputPin(int)") >= 0, row.inputs > 0);
  EXPECT_EQ(meta->indexOfSlot("InterpretMessage(QString*,QString*)") >= 0, row.answersQueries);
}

TEST(BlockFactoryTypes, AreElevenAndNamedInThisOrder) {
  EXPECT_EQ(BlockFactory::KnownTypes(),
            QString("source, time_sorting, tee, position, image, spectrum, tof_histogram, dumper, oscilloscope, "
                    "rate_counters_sink, hv"));
}

INSTANTIATE_TEST_SUITE_P(Rows, BlockFactoryType, testing::ValuesIn(TypeRows),
                         [](const auto& row) { return std::string(row.param.keyword); });

}  // namespace
