#include "client/HeatInk.h"
#include "client/HeatLegend.h"

#include <gtest/gtest.h>

#include <vector>

namespace korvax::client {
namespace {

TEST(HeatInk, shadesByCharactersWithoutBlanksAtTheEnd) {
  const HeatInk ink(false);
  EXPECT_EQ(ink.Levels(), 9);
  EXPECT_EQ(ink.RowsPerLine(), 1U);
  EXPECT_EQ(ink.Line(std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0}, {}), " .:-=+*#%@");
  EXPECT_EQ(ink.Line(std::vector{0, 0}, {}), "");
  EXPECT_EQ(ink.Swatch(9), "@@");
}

TEST(HeatInk, coloursTwoRowsALineAndSwitchesColoursOnlyWhereTheyChange) {
  const HeatInk ink(true);
  EXPECT_EQ(ink.Levels(), 14);
  EXPECT_EQ(ink.RowsPerLine(), 2U);
  EXPECT_EQ(ink.Line(std::vector{0, 14, 14}, std::vector{6, 6, 0}),
            QStringLiteral("\x1b[38;5;16m\x1b[48;5;196m▀\x1b[38;5;231m▀\x1b[48;5;16m▀\x1b[0m"));
  EXPECT_EQ(ink.Swatch(14), QStringLiteral("\x1b[48;5;231m  \x1b[0m"));
}

TEST(HeatInk, aLastRowAloneIsColouredInItsUpperHalf) {
  EXPECT_EQ(HeatInk(true).Line(std::vector{1, 1}, {}), QStringLiteral("\x1b[38;5;19m▀▀\x1b[0m"));
}

QString LegendOf(quint64 largest, int width, bool logarithmic = false) {
  const HeatInk ink(false);
  return Legend(HeatScale(largest, ink.Levels(), logarithmic), ink, width);
}

TEST(HeatLegend, givesTheSmallestCountOfEachLevelAndTheLargestCount) {
  EXPECT_EQ(LegendOf(90, 80), ".. 1  :: 11  -- 21  == 31  ++ 41  ** 51  ## 61  %% 71  @@ 81-90");
  EXPECT_EQ(LegendOf(2, 80), "++ 1  @@ 2");
  EXPECT_EQ(LegendOf(1, 80), "@@ 1");
  EXPECT_EQ(LegendOf(0, 80), "none yet");
}

TEST(HeatLegend, roundsLongNumbersDownToThreeDigits) {
  EXPECT_EQ(LegendOf(8999, 80), ".. 1  :: 1k  -- 2k  == 3k  ++ 4k  ** 5k  ## 6k  %% 7k  @@ 8k-8.99k");
  EXPECT_EQ(LegendOf(4294967295U, 26), ".. 1  @@ 3.81G-4.29G");
}

TEST(HeatLegend, leavesOutLevelsThatHaveNoRoom) {
  EXPECT_EQ(LegendOf(90, 41), ".. 1  -- 21  ++ 41  ## 61  @@ 81-90");
  EXPECT_EQ(LegendOf(90, 21), ".. 1  ++ 41  @@ 81-90");
  EXPECT_EQ(LegendOf(90, 20), ".. 1  @@ 81-90");
  EXPECT_EQ(LegendOf(90, 8), "@@ 81-90");
  EXPECT_EQ(LegendOf(90, 7), "");
  EXPECT_EQ(LegendOf(0, 5), "none…");
}

}  // namespace
}  // namespace korvax::client
