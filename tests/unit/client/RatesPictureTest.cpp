#include "client/RatesPicture.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

const Heading heading{QStringLiteral("a/rates"), QStringLiteral("timestamp 7"), {}};

RateRecord Of(std::vector<ChannelRates> channels) {
  return {7, std::move(channels)};
}

/// The lines as one text that begins with a line end, as a raw string literal does.
std::string Drawn(const RateRecord& record, const RatesOptions& options) {
  return '\n' + Draw(heading, record, options).join(QLatin1Char('\n')).toStdString() + '\n';
}

TEST(RatesPicture, drawsATableWithABarForTheRateIn) {
  const RateRecord record = Of({{1000, 900, 123456, 99}, {500, 1, 2, 3}, {0.4, 0, 1, 0}, {0, 0, 0, 0}});
  EXPECT_EQ(Drawn(record, {70, 24}), R"(
a/rates                                                    timestamp 7
channel  rate in  rate out  counts in  counts out
      0   1000/s     900/s     123456          99  ███████████████████
      1    500/s     1.0/s          2           3  █████████▌
      2    0.4/s     0.0/s          1           0  ▏
     T0    0.0/s     0.0/s          0           0
)");
}

TEST(RatesPicture, drawsDecadesAtEqualDistances) {
  const RateRecord record = Of({{1000, 0, 0, 0}, {100, 0, 0, 0}, {10, 0, 0, 0}, {0.1, 0, 0, 0}, {0.001, 0, 0, 0}});
  EXPECT_EQ(Drawn(record, {59, 24, true}), R"(
a/rates                                         timestamp 7
channel  rate in  rate out  counts in  counts out
      0   1000/s     0.0/s          0           0  ████████
      1    100/s     0.0/s          0           0  ██████
      2   10.0/s     0.0/s          0           0  ████
      3    0.1/s     0.0/s          0           0  ▏
     T0    0.0/s     0.0/s          0           0  ▏
)");
}

TEST(RatesPicture, aSingleChannelIsTheT0) {
  EXPECT_EQ(Drawn(Of({{0, 0, 0, 0}}), {51, 24}), R"(
a/rates                                 timestamp 7
channel  rate in  rate out  counts in  counts out
     T0    0.0/s     0.0/s          0           0
)");
}

TEST(RatesPicture, aRecordWithoutChannelsIsItsHeadingOnly) {
  EXPECT_EQ(Drawn(Of({}), {40, 24}), "\na/rates                      timestamp 7\n");
}

TEST(RatesPicture, leavesOutBarsAndThenFiguresWhereTheWidthDoesNotSuffice) {
  EXPECT_EQ(Drawn(Of({{5, 5, 5, 5}}), {54, 24}), R"(
a/rates                                    timestamp 7
channel  rate in  rate out  counts in  counts out
     T0    5.0/s     5.0/s          5           5
)");
  EXPECT_EQ(Drawn(Of({{5, 5, 5, 5}}), {24, 24}), R"(
a/rates      timestamp 7
channel  rate in  rate …
     T0    5.0/s     5.…
)");
}

TEST(RatesPicture, leavesOutChannelsThatHaveNoRoomInTheHeight) {
  const RateRecord record = Of({{1, 1, 1, 1}, {2, 2, 2, 2}, {3, 3, 3, 3}, {4, 4, 4, 4}});
  EXPECT_EQ(Drawn(record, {54, 5, false, true}), R"(
a/rates                                    timestamp 7
channel  rate in  rate out  counts in  counts out
      0    1.0/s     1.0/s          1           1
      1    2.0/s     2.0/s          2           2
No room for 2 of 4 channels: make the terminal taller.
)");
  EXPECT_EQ(Draw(heading, record, {54, 6, false, true}).size(), 6);
  EXPECT_EQ(Draw(heading, record, {54, 3, false, false}).size(), 6) << "what scrolls needs no room";
}

TEST(RatesPicture, fitsIntoAnySize) {
  const RateRecord record = Of(std::vector<ChannelRates>(9, {1e9, 1e9, 12345678901234U, 9}));
  Heading noted = heading;
  noted.notes << QStringLiteral("some note");
  for (int width = -1; width < 100; ++width) {
    for (int height = -1; height < 20; ++height) {
      const QStringList lines = Draw(noted, record, {width, height, true, true});
      EXPECT_LE(lines.size(), std::max(1, height));
      for (const QString& line : lines) {
        EXPECT_LE(line.size(), std::max(1, width)) << width << 'x' << height << ": " << line.toStdString();
      }
    }
  }
}

struct BarRow {
  double rate;
  double largest;
  int width;
  bool logarithmic;
  const char* bar;
};

class RateBars : public testing::TestWithParam<BarRow> {};

TEST_P(RateBars, areAsLongAsTheirShare) {
  const BarRow& row = GetParam();
  EXPECT_EQ(RateBar(row.rate, row.largest, row.width, row.logarithmic).toStdString(), row.bar);
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
