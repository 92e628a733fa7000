#include "sinks/FrameBuffer.h"

#include <gtest/gtest.h>

namespace {

using korvax::FrameBuffer;
using korvax::StripPoint;

// A frame that can be told from others by the x of its only point.
std::vector<StripPoint> Frame(int number) {
  return {{static_cast<double>(number), 0.5}};
}

std::vector<double> Numbers(const std::vector<std::vector<StripPoint>>& frames) {
  std::vector<double> numbers;
  for (const std::vector<StripPoint>& frame : frames) {
    numbers.push_back(frame.at(0).x);
  }
  return numbers;
}

TEST(FrameBuffer, givesItsFramesOldestFirstAndEachOnce) {
  FrameBuffer buffer;
  buffer.Add(Frame(3));
  buffer.Add({});
  buffer.Add({{1.0, 0.25}, {2.0, 0.75}});
  const auto frames = buffer.Take();
  ASSERT_EQ(frames.size(), 3U);
  EXPECT_EQ(frames[0].size(), 1U);
  EXPECT_EQ(frames[0][0].x, 3.0);
  EXPECT_TRUE(frames[1].empty());
  EXPECT_EQ(frames[2][1].x, 2.0);
  EXPECT_EQ(frames[2][1].y, 0.75);
  EXPECT_TRUE(buffer.Take().empty());
}

TEST(FrameBuffer, withMoreThan100FramesReplacesTheNewest_isKept) {
  FrameBuffer buffer;
  std::vector<double> expected;
  for (int i = 0; i < 101; ++i) {
    buffer.Add(Frame(i));
    expected.push_back(i);
  }
  buffer.Add(Frame(500));
  buffer.Add(Frame(501));
  expected.back() = 501;
  EXPECT_EQ(Numbers(buffer.Take()), expected);
}

TEST(FrameBuffer, emptiedTakesFramesAgain) {
  FrameBuffer buffer;
  for (int i = 0; i < 200; ++i) {
    buffer.Add(Frame(i));
  }
  buffer.Clear();
  EXPECT_TRUE(buffer.Take().empty());
  buffer.Add(Frame(1));
  buffer.Add(Frame(2));
  EXPECT_EQ(Numbers(buffer.Take()), (std::vector<double>{1, 2}));
}

}  // namespace
