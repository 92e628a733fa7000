#include "client/SpectrumPicture.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;

/// One channel, number 0, without notes.
Picture Of(Counts counts) {
  return {{QStringLiteral("a/b"), QStringLiteral("counting"), {}}, {{0, std::move(counts), {}}}};
}

PictureOptions Sized(int width, int height, bool logarithmic = false) {
  PictureOptions options;
  options.width = width;
  options.height = height;
  options.logarithmic = logarithmic;
  return options;
}

/// The lines as one text that begins with a line end, as a raw string literal does.
std::string Drawn(const Picture& picture, const PictureOptions& options) {
  return '\n' + Draw(picture, options).join(QLatin1Char('\n')).toStdString() + '\n';
}

TEST(SpectrumPicture, drawsCountsInEighthsOfARow) {
  EXPECT_EQ(Drawn(Of({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}), Sized(40, 9)), R"(
a/b                             counting
channel 0 · 55 counts
  10 ┤                           ▄▄▄███
     │                     ▄▄▄█████████
   5 ┤               ▄▄▄███████████████
     │         ▄▄▄█████████████████████
     │   ▄▄▄███████████████████████████
   0 └─┬─────┬─────┬─────┬─────┬─────┬─
 bin   0     2     4     6     8     10
)");
}

TEST(SpectrumPicture, drawsDecadesAtEqualDistances) {
  EXPECT_EQ(Drawn(Of({0, 1, 10, 100, 1000, 10000}), Sized(40, 12, true)), R"(
a/b                             counting
channel 0 · 11111 counts
 10k ┤                         █████
     │                    ▁▁▁▁▁█████
  1k ┤                    ██████████
     │               ▂▂▂▂▂██████████
 100 ┤               ███████████████
     │          ▃▃▃▃▃███████████████
  10 ┤          ████████████████████
     │     ▄▄▄▄▄████████████████████
     └──┬────┬────┬────┬────┬────┬──
 bin    0    1    2    3    4    5
)");
}

TEST(SpectrumPicture, aSingleCountIsSeenBesideAMillion) {
  EXPECT_EQ(Drawn(Of({1, 0, 1000000}), Sized(32, 7)), R"(
a/b                     counting
channel 0 · 1000001 counts
  1M ┤                ████████
     │                ████████
     │▁▁▁▁▁▁▁▁        ████████
   0 └───┬───────┬───────┬────
 bin     0       1       2
)");
  EXPECT_EQ(Drawn(Of({1, 0, 1000000}), Sized(32, 7, true)), R"(
a/b                     counting
channel 0 · 1000001 counts
  1M ┤                ████████
     │                ████████
 100 ┤▁▁▁▁▁▁▁▁        ████████
     └───┬───────┬───────┬────
 bin     0       1       2
)");
}

TEST(SpectrumPicture, aSingleCountInManyBinsIsSeen) {
  Counts counts(16384, 0);
  counts[8192] = 1;
  EXPECT_EQ(Drawn(Of(counts), Sized(72, 7)), R"(
a/b                                                             counting
channel 0 · 1 count · fullest bin 8192 (1) · 249 bins/column
   1 ┤                                █
     │                                █
     │                                █
   0 └┬───────┬───────┬───────┬───────┬───────┬───────┬───────┬───────┬─
 bin  0      2000    4000    6000    8000   10000   12000   14000  16000
)");
}

TEST(SpectrumPicture, allZerosAreAnEmptyPlot) {
  EXPECT_EQ(Drawn(Of(Counts(8, 0)), Sized(30, 7)), R"(
a/b                   counting
channel 0 · 0 counts
   1 ┤
     │
     │
   0 └─┬─────┬─────┬─────┬────
 bin   0     2     4     6
)");
  EXPECT_EQ(Drawn(Of(Counts(8, 0)), Sized(30, 7, true)), R"(
a/b                   counting
channel 0 · 0 counts
   1 ┤
     │
     │
     └─┬─────┬─────┬─────┬────
 bin   0     2     4     6
)");
}

TEST(SpectrumPicture, aChannelWithoutBinsSaysSo) {
  EXPECT_EQ(Drawn(Of({}), Sized(80, 24)), R"(
a/b                                                                     counting
channel 0 · 0 counts
This channel has no bins: see "bin_number" in the server's configuration.
)");
}

TEST(SpectrumPicture, fullCountersInEveryBin) {
  EXPECT_EQ(Drawn(Of(Counts(16384, 4294967295U)), Sized(60, 8)), R"(
a/b                                                 counting
channel 0 · 70368744161280 counts
  2T ┤
     │▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▃
  1T ┤██████████████████████████████████████████████████████
     │██████████████████████████████████████████████████████
   0 └┬───────────────┬───────────────┬────────────────┬────
 bin  0              5000           10000            15000
)");
}

TEST(SpectrumPicture, showsARangeOfBinsAndItsFigures) {
  PictureOptions options = Sized(78, 7);
  options.range = {100, 119};
  Counts counts(200, 1);
  counts[110] = 4;
  Picture picture = Of(counts);
  picture.channels[0].rate = 12.345;
  EXPECT_EQ(Drawn(picture, options), R"(
a/b                                                                   counting
channel 0, bins 100-119 · 23 counts · fullest bin 110 (4) · 12.3/s
   5 ┤                              ▃▃▃
     │                              ███
     │▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅███▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅
   0 └─┬─────┬─────┬─────┬─────┬─────┬─────┬─────┬─────┬─────┬────
 bin  100   102   104   106   108   110   112   114   116   118
)");
}

TEST(SpectrumPicture, aRangeBeyondTheLastBinSaysSo) {
  PictureOptions options = Sized(60, 7);
  options.range = {8, std::nullopt};
  EXPECT_EQ(Drawn(Of(Counts(8, 1)), options), R"(
a/b                                                 counting
channel 0 · 0 counts
No bin 8: the last bin is 7.
)");
  options.range = {7, 1000};
  EXPECT_EQ(Drawn(Of(Counts(8, 1)), options), R"(
a/b                                                 counting
channel 0, bins 7-7 · 1 count · fullest bin 7 (1)
   1 ┤██████████████████████████████████████████████████████
     │██████████████████████████████████████████████████████
     │██████████████████████████████████████████████████████
   0 └──────────────────────────┬───────────────────────────
 bin                            7
)");
}

TEST(SpectrumPicture, narrowPicturesLeaveOutWhatDoesNotFit) {
  EXPECT_EQ(Drawn(Of({1, 2, 3, 4}), Sized(20, 7)), R"(
a/b         counting
channel 0
   5 ┤         ▃▃▃
     │   ▂▂▂▆▆▆███
     │▅▅▅█████████
   0 └─┬─────┬────
 bin   0     2
)");
  EXPECT_EQ(Drawn(Of({1, 2, 3, 4}), Sized(10, 7)), R"(
a/b  coun…
channel 0
   5 ┤   ▃
     │ ▂▆█
     │▅███
   0 └┬───
 bin  0
)");
  EXPECT_EQ(Drawn(Of({1, 2, 3, 4}), Sized(9, 7)), R"(
a/b  cou…
channel 0
Too narr…
)");
}

TEST(SpectrumPicture, aLongPathKeepsItsEndAndNotesAreBroken) {
  Picture picture = Of({});
  picture.heading.target = QStringLiteral("processing/0/filter_chain/main/chain/spectrum");
  picture.heading.notes << QStringLiteral("0123456789012345678901234567890123456789ABC");
  EXPECT_EQ(Drawn(picture, Sized(40, 24)), R"(
…lter_chain/main/chain/spectrum counting
0123456789012345678901234567890123456789
ABC
channel 0 · 0 counts
This channel has no bins: see "bin_numb…
)");
}

TEST(SpectrumPicture, severalChannelsStandBelowEachOther) {
  Picture picture = Of({1, 2});
  picture.channels.push_back({5, {3, 0}, 1234.5});
  EXPECT_EQ(Drawn(picture, Sized(64, 5)), R"(
a/b                                                     counting
channel 0 · 3 counts · fullest bin 1 (2)
   2 ┤▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄█████████████████████████████
   0 └──────────────┬────────────────────────────┬──────────────
 bin                0                            1
channel 5 · 3 counts · fullest bin 0 (3) · 1235/s
   5 ┤▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅▅
   0 └──────────────┬────────────────────────────┬──────────────
 bin                0                            1
)");
}

TEST(SpectrumPicture, channelsThatShareTheHeightAreLeftOutWhereItDoesNotSuffice) {
  Picture picture = Of({1, 2});
  picture.channels.push_back({5, {3, 0}, {}});
  picture.channels.push_back({6, {3, 0}, {}});
  PictureOptions options = Sized(56, 15);
  options.shareHeight = true;
  EXPECT_EQ(Drawn(picture, options), R"(
a/b                                             counting
No room for 1 of 3 channels: make the terminal taller.
channel 0 · 3 counts · fullest bin 1 (2)
   2 ┤                         █████████████████████████
     │▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄█████████████████████████
     │██████████████████████████████████████████████████
   0 └────────────┬────────────────────────┬────────────
 bin              0                        1
channel 5 · 3 counts · fullest bin 0 (3)
   5 ┤
     │▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆▆
     │█████████████████████████
   0 └────────────┬────────────────────────┬────────────
 bin              0                        1
)");
}

TEST(SpectrumPicture, fitsIntoAnySize) {
  Picture picture = Of(Counts(100, 7));
  picture.heading.notes << QStringLiteral("some note");
  picture.channels.push_back({1, Counts(3, 1), 1e9});
  for (int width = -1; width < 100; ++width) {
    for (int height = -1; height < 40; ++height) {
      PictureOptions options = Sized(width, height);
      options.shareHeight = true;
      const QStringList lines = Draw(picture, options);
      EXPECT_LE(lines.size(), std::max(1, height));
      for (const QString& line : lines) {
        EXPECT_LE(line.size(), std::max(1, width)) << width << 'x' << height << ": " << line.toStdString();
      }
    }
  }
}

TEST(Shown, isThePartOfTheCountsInTheRange) {
  const Counts counts{10, 11, 12, 13};
  EXPECT_THAT(Shown(counts, {}), ElementsAre(10, 11, 12, 13));
  EXPECT_THAT(Shown(counts, {1, 2}), ElementsAre(11, 12));
  EXPECT_THAT(Shown(counts, {3, 3}), ElementsAre(13));
  EXPECT_THAT(Shown(counts, {2, 99}), ElementsAre(12, 13));
  EXPECT_TRUE(Shown(counts, {4, 99}).empty());
  EXPECT_TRUE(Shown({}, {}).empty());
}

}  // namespace
}  // namespace korvax::client
