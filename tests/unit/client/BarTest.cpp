#include "client/Bar.h"

#include <gtest/gtest.h>

namespace korvax::client {
namespace {

struct BarRow {
  double value;
  double largest;
  int width;
  bool logarithmic;
  const char* bar;
};

class RateBars : public testing::TestWithParam<BarRow> {};

TEST_P(RateBars, areAsLongAsTheirShare) {
  const BarRow& row = GetParam();
  EXPECT_EQ(Bar(row.value, row.largest, row.width, row.logarithmic).toStdString(), row.bar);
}

INSTANTIATE_TEST_SUITE_P(RatesPicture, RateBars,
                         testing::Values(BarRow{0, 0, 4, false, ""}, BarRow{0, 0, 4, true, ""},
                                         BarRow{0, 9, 4, false, ""}, BarRow{9, 9, 4, false, "████"},
                                         BarRow{5, 10, 4, false, "██"}, BarRow{1, 8, 1, false, "▏"},
                                         BarRow{7, 8, 1, false, "▉"}, BarRow{1e-9, 8, 4, false, "▏"},
                                         BarRow{1e300, 1e300, 2, false, "██"}, BarRow{1e300, 1e300, 2, true, "██"},
                                         BarRow{0.01, 0.01, 4, true, "▏"}, BarRow{0.1, 1000, 4, true, "▏"},
                                         BarRow{10, 1000, 4, true, "██"}));

}  // namespace
}  // namespace korvax::client
