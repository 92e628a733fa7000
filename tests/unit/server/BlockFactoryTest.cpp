#include "server/BlockFactory.h"

#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<KorvaxBlock> Create(const char* keyword) {
  static const BoardList boards;
  static const BlockList blocks;
  return BlockFactory::Create(keyword, {&boards, &blocks, "processing/0/p", "c.json"},
                              test::Object(R"({"name": "n", "data_type": "energy"})"));
}

TEST(BlockFactory, MakesTheBlockOfEveryKeyword) {
  const QStringList keywords = BlockFactory::KnownTypes().split(", ");
  EXPECT_EQ(keywords, (QStringList{"source", "time_sorting", "tee", "position", "image", "spectrum",
                                   "tof_histogram", "dumper", "oscilloscope", "rate_counters_sink", "hv"}));
  for (const QString& keyword : keywords) {
    SCOPED_TRACE(keyword.toStdString());
    const auto block = Create(keyword.toLatin1().constData());
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->BlockType(), keyword);
    EXPECT_EQ(block->Name(), QString("n"));
    EXPECT_EQ(block->FullPath(), QString("processing/0/p"));
    EXPECT_EQ(block->parent(), nullptr);
  }
}

TEST(BlockFactory, MakesNothingForAnyOtherKeyword) {
  for (const char* keyword : {"", "Source", "SPECTRUM", "spectrum ", " source", "histogram", "commands", "sources",
                              "source, spectrum"}) {
    EXPECT_EQ(Create(keyword), nullptr) << keyword;
  }
}

}  // namespace
