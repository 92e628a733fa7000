#include "client/RatesPicture.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

const Heading heading{QStringLiteral("a/rates"), QStringLiteral("timestamp 7"), {}};

RateReading Of(std::vector<ChannelRates> channels) {
  return {7, std::move(channels)};
}

/// The lines as one text that begins with a line end, as a raw string literal does.
std::string Drawn(const RateReading& reading, const RatesOptions& options) {
  return '\n' + Draw(heading, reading, options).join(QLatin1Char('\n')).toStdString() + '\n';
}

TEST(RatesPicture, drawsATableWithABarForTheRateIn) {
  const RateReading reading = Of({{1000, 900, 123456, 99}, {500, 1, 2, 3}, {0.4, 0, 1, 0}, {0, 0, 0, 0}});
  EXPECT_EQ(Drawn(reading, {70, 24}), R"(
a/rates                                                    timestamp 7
channel  rate in  rate out  counts in  counts out
      0   1000/s     900/s     123456          99  ███████████████████
      1    500/s     1.0/s          2           3  █████████▌
      2    0.4/s     0.0/s          1           0  ▏
     T0    0.0/s     0.0/s          0           0
)");
}

TEST(RatesPicture, drawsDecadesAtEqualDistances) {
  const RateReading reading =
      Of({{1000, 0, 0, 0}, {100, 0, 0, 0}, {10, 0, 0, 0}, {0.1, 0, 0, 0}, {0.001, 0, 0, 0}});
  EXPECT_EQ(Drawn(reading, {59, 24, true}), R"(
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
  const RateReading reading = Of({{1, 1, 1, 1}, {2, 2, 2, 2}, {3, 3, 3, 3}, {4, 4, 4, 4}});
  EXPECT_EQ(Drawn(reading, {54, 5, false, true}), R"(
a/rates                                    timestamp 7
channel  rate in  rate out  counts in  counts out
      0    1.0/s     1.0/s          1           1
      1    2.0/s     2.0/s          2           2
No room for 2 of 4 channels: make the terminal taller.
)");
  EXPECT_EQ(Draw(heading, reading, {54, 6, false, true}).size(), 6);
  EXPECT_EQ(Draw(heading, reading, {54, 3, false, false}).size(), 6) << "what scrolls needs no room";
}

TEST(RatesPicture, fitsIntoAnySize) {
  const RateReading reading = Of(std::vector<ChannelRates>(9, {1e9, 1e9, 12345678901234U, 9}));
  Heading noted = heading;
  noted.notes << QStringLiteral("some note");
  for (int width = -1; width < 100; ++width) {
    for (int height = -1; height < 20; ++height) {
      const QStringList lines = Draw(noted, reading, {width, height, true, true});
      EXPECT_LE(lines.size(), std::max(1, height));
      for (const QString& line : lines) {
        EXPECT_LE(line.size(), std::max(1, width)) << width << 'x' << height << ": " << line.toStdString();
      }
    }
  }
}

}  // namespace
}  // namespace korvax::client
