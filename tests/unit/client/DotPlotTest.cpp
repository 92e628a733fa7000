#include "client/DotPlot.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

TEST(DotPlot, setsOneDotOfEightFromTheBottomUp) {
  const std::vector<const char*> left{"⡀", "⠄", "⠂", "⠁"};
  const std::vector<const char*> right{"⢀", "⠠", "⠐", "⠈"};
  for (int dot = 0; dot < 4; ++dot) {
    DotPlot plot(2, 1);
    plot.Fill(0, dot, dot);
    EXPECT_EQ(plot.Row(0).toStdString(), left[static_cast<std::size_t>(dot)]);
    DotPlot other(2, 1);
    other.Fill(1, dot, dot);
    EXPECT_EQ(other.Row(0).toStdString(), right[static_cast<std::size_t>(dot)]);
  }
}

TEST(DotPlot, fillsAColumnAcrossRows) {
  DotPlot plot(3, 3);
  plot.Fill(2, 3, 8);
  EXPECT_EQ(plot.Row(0).toStdString(), " ⠁");
  EXPECT_EQ(plot.Row(1).toStdString(), " ⡇");
  EXPECT_EQ(plot.Row(2).toStdString(), " ⡀");
}

TEST(DotPlot, leavesOutBlanksAtTheEndOfARow) {
  DotPlot plot(9, 2);
  plot.Fill(0, 0, 7);
  plot.Fill(1, 0, 7);
  EXPECT_EQ(plot.Row(0).toStdString(), "⣿");
  EXPECT_EQ(DotPlot(9, 1).Row(0).toStdString(), "");
  EXPECT_EQ(DotPlot(0, 1).Row(0).toStdString(), "");
}

}  // namespace
}  // namespace korvax::client
