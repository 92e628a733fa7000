#pragma once

#include "sinks/Image.h"
#include "sinks/Position.h"
#include "sinks/time_distribution.h"
#include "tests/unit/sinks/SinkFixture.h"

namespace test {

// What tests of all sinks alike need to know of each: its keyword, parameters, a message that counts once, how its
// counts are asked for, and what they are before and after.

struct TimeDistributionKind {
  using Block = time_distribution;
  static constexpr const char* Keyword = "tof_histogram";
  static constexpr bool CountsAtOnce = true;
  static Parameters Settings() { return {{"bin_number", "3"}, {"ch_number", "2"}, {"binning", "10"}}; }
  static DataMessage Counting() { return MessageOf(Energy(0, 500, 14)); }
  static constexpr const char* Query = R"({"args":[{"cmd":"get_data","channels":[0]}]})";
  static constexpr const char* Blank = "[{\"data\":[0,0,0]}]";
  static constexpr const char* CountedOnce = "[{\"data\":[0,1,0]}]";
};

struct PositionKind {
  using Block = Position;
  static constexpr const char* Keyword = "position";
  static constexpr bool CountsAtOnce = false;
  static Parameters Settings() {
    return {{"positions", "[0,0]"}, {"correlated_channels", "[1,0]"}, {"y_positions", "4"}};
  }
  static DataMessage Counting() { return MessageOf(Energy(0, 100), Energy(1, 300)); }
  static constexpr const char* Query = R"({"args":[{"cmd":"get_data","source":"heatmap"}]})";
  static constexpr const char* Blank = "{\"data\":[[0],[0],[0],[0]]}";
  static constexpr const char* CountedOnce = "{\"data\":[[0],[1],[0],[0]]}";
};

struct ImageKind {
  using Block = Image;
  static constexpr const char* Keyword = "image";
  static constexpr bool CountsAtOnce = false;
  static Parameters Settings() { return {{"x_positions", "[0,0]"}, {"y_positions", "[0,0]"}}; }
  static DataMessage Counting() { return MessageOf(Energy(3, 500)); }
  static constexpr const char* Query = R"({"args":[{"cmd":"get_data","source":"cumulative"}]})";
  static constexpr const char* Blank = "{\"data\":[[0,0],[0,0]]}";
  static constexpr const char* CountedOnce = "{\"data\":[[0,0],[0,1]]}";
};

using SinkKinds = testing::Types<TimeDistributionKind, PositionKind, ImageKind>;

struct SinkNames {
  template <typename Kind>
  static std::string GetName(int /*index*/) {
    return Kind::Keyword;
  }
};

}  // namespace test
