#include "client/HeatPicture.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::HasSubstr;

const Heading heading{QStringLiteral("a/b"), QStringLiteral("counting"), {}};

HeatView Of(std::size_t rows, std::size_t columns, Counts counts) {
  return {{rows, columns, std::move(counts)}, {}, QStringLiteral("positions")};
}

/// The lines as one text that begins with a line end, as a raw string literal does.
std::string Drawn(const HeatView& view, const PanelRoom& room, const HeatOptions& options = {}) {
  return '\n' + Draw(heading, view, options, room).join(QLatin1Char('\n')).toStdString() + '\n';
}

/// As on a terminal that doesn't show colours.
QString WithoutColours(QString text) {
  return text.remove(QRegularExpression(QStringLiteral("\x1b\\[[0-9;]*m")));
}

TEST(HeatPicture, drawsEachCellWithItsShade) {
  EXPECT_EQ(Drawn(Of(3, 4, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1}), {48, 9}), R"(
a/b                                     counting
3 rows x 4 columns · 46 counts
   row ┌────────────────────────────────────────
     0 ┤          ..........::::::::::----------
       │==========++++++++++**********##########
     2 ┤%%%%%%%%%%@@@@@@@@@@          ..........
       └────┬─────────┬─────────┬─────────┬─────
column      0         1         2         3
counts  .. 1  :: 2  -- 3  ++ 5  ** 6  ## 7  @@ 9
)");
}

TEST(HeatPicture, cellsTakeSeveralLinesWhereThereIsRoom) {
  EXPECT_EQ(Drawn(Of(2, 2, {9, 0, 1, 2}), {80, 13}), R"(
a/b                                                                     counting
2 rows x 2 columns · 12 counts · most at row 0, column 0 (9)
   row ┌────────────────────────────────────────────────────────────────────────
       │@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@
     0 ┤@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@
       │@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@
       │....................................::::::::::::::::::::::::::::::::::::
     1 ┤....................................::::::::::::::::::::::::::::::::::::
       │....................................::::::::::::::::::::::::::::::::::::
       └─────────────────┬───────────────────────────────────┬──────────────────
column                   0                                   1
counts  .. 1  :: 2  -- 3  == 4  ++ 5  ** 6  ## 7  %% 8  @@ 9
)");
}

TEST(HeatPicture, joinsRowsAndColumnsThatDoNotFit) {
  Counts counts(std::size_t{10} * 100, 0);
  counts[0] = 1;    // row 0, column 0
  counts[112] = 8;  // row 1, column 12: in the first two rows and the third five columns
  counts[999] = 6;  // row 9, column 99
  EXPECT_EQ(Drawn(Of(10, 100, counts), {28, 11}), R"(
a/b                 counting
10 rows x 100 columns
   row ┌────────────────────
     0 ┤: @
       │
     5 ┤
       │
       │                   #
       └┬─────────┬─────────
column  0         50
counts  :: 1  ++ 4  @@ 8
)");
}

TEST(HeatPicture, saysWhatJoinedCellsAreTheSumsOf) {
  Counts counts(std::size_t{256} * 16, 1);
  counts[192 * 16 + 3] = 100;
  EXPECT_EQ(Drawn(Of(256, 16, counts), {74, 14}), R"(
a/b                                                               counting
256 rows x 16 columns · 4195 counts · most at row 192, column 3 (100)
   row ┌─ sums of 32 rows x 1 column ───────────────────────────────────
     0 ┤----------------------------------------------------------------
       │----------------------------------------------------------------
       │----------------------------------------------------------------
   100 ┤----------------------------------------------------------------
       │----------------------------------------------------------------
       │----------------------------------------------------------------
   200 ┤------------@@@@------------------------------------------------
       │----------------------------------------------------------------
       └─┬───────┬───────┬───────┬───────┬───────┬───────┬───────┬──────
column   0       2       4       6       8       10      12      14
counts  .. 1  :: 15  -- 30  == 44  ++ 59  ** 73  ## 88  %% 102  @@ 117-131
)");
}

TEST(HeatPicture, theLogarithmShowsASingleCountBesideAMillion) {
  EXPECT_THAT(Drawn(Of(1, 3, {1, 1000, 1000000}), {32, 7}, {true, false}),
              HasSubstr("┤........++++++++@@@@@@@@\n"));
}

TEST(HeatPicture, aSingleCountIsSeenInAnyScale) {
  EXPECT_THAT(Drawn(Of(1, 3, {1, 0, 1000000}), {32, 7}), HasSubstr("┤........        @@@@@@@@\n"));
}

TEST(HeatPicture, allZerosAreAnEmptyMap) {
  EXPECT_EQ(Drawn(Of(2, 3, Counts(6, 0)), {32, 8}), R"(
a/b                     counting
2 rows x 3 columns · 0 counts
   row ┌────────────────────────
     0 ┤
       │
       └───┬───────┬───────┬────
column     0       1       2
counts  none yet
)");
}

TEST(HeatPicture, aSingleCell) {
  EXPECT_EQ(Drawn(Of(1, 1, {5}), {40, 8}), R"(
a/b                             counting
1 row x 1 column · 5 counts
   row ┌────────────────────────────────
     0 ┤@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@
       │@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@
       └───────────────┬────────────────
column                 0
counts  :: 1  == 2  ** 3  %% 4  @@ 5
)");
}

TEST(HeatPicture, mapsWithoutRowsOrColumnsNameTheirKey) {
  EXPECT_EQ(Drawn(Of(0, 0, {}), {80, 24}), R"(
a/b                                                                     counting
0 rows x 0 columns · 0 counts
This map has no rows: see "y_positions" in the server's configuration.
)");
  HeatView image = Of(3, 0, {});
  image.columnsKey = QStringLiteral("x_positions");
  EXPECT_EQ(Drawn(image, {80, 24}), R"(
a/b                                                                     counting
3 rows x 0 columns · 0 counts
This map has no columns: see "x_positions" in the server's configuration.
)");
}

TEST(HeatPicture, fullCountersAreSummedWithoutLoss) {
  const std::string drawn = Drawn(Of(64, 64, Counts(std::size_t{64} * 64, 4294967295U)), {100, 12});
  EXPECT_THAT(drawn, HasSubstr("17592186040320 counts · most at row 0, column 0 (4294967295)"));
  EXPECT_THAT(drawn, HasSubstr("@@ "));
}

TEST(HeatPicture, showsARate) {
  HeatView view = Of(1, 1, {5});
  view.rate = 12.345;
  EXPECT_THAT(Drawn(view, {80, 8}), HasSubstr("most at row 0, column 0 (5) · 12.3/s\n"));
}

TEST(HeatPicture, manyRowsWidenTheirLabels) {
  const QStringList lines = Draw(heading, Of(1000000, 1, Counts(1000000, 1)), {}, {40, 11});
  EXPECT_TRUE(lines[3].startsWith(QStringLiteral("      0 ┤"))) << lines[3].toStdString();
  EXPECT_TRUE(lines[5].startsWith(QStringLiteral(" 500000 ┤"))) << lines[5].toStdString();
}

TEST(HeatPicture, coloursPutTwoRowsInALine) {
  const QStringList lines = Draw(heading, Of(3, 2, {1, 0, 0, 2, 2, 2}), {false, true}, {12, 8});
  ASSERT_EQ(lines.size(), 8);
  EXPECT_EQ(lines[3], QStringLiteral("     0 ┤\x1b[38;5;202m\x1b[48;5;16m▀▀\x1b[38;5;16m\x1b[48;5;231m▀▀\x1b[0m"));
  EXPECT_EQ(lines[4], QStringLiteral("       │\x1b[38;5;231m▀▀▀▀\x1b[0m"));
  EXPECT_EQ(WithoutColours(lines[7]), QStringLiteral("counts     2"));
}

TEST(HeatPicture, narrowPicturesLeaveOutWhatDoesNotFit) {
  EXPECT_EQ(Drawn(Of(2, 4, {1, 2, 3, 4, 5, 6, 7, 8}), {12, 8}), R"(
a/b   count…
2 rows x 4 …
   row ┌────
     0 ┤:-=+
       │*#%@
       └┬───
column  0
counts  @@ 8
)");
  EXPECT_EQ(Drawn(Of(2, 4, {1, 2, 3, 4, 5, 6, 7, 8}), {11, 8}), R"(
a/b   coun…
2 rows x 4…
Too narrow…
)");
}

TEST(HeatPicture, fitsIntoAnySize) {
  Heading noted = heading;
  noted.notes << QStringLiteral("some note");
  HeatView view = Of(30, 50, Counts(1500, 7));
  view.rate = 1e9;
  for (const bool coloured : {false, true}) {
    for (int width = -1; width < 100; ++width) {
      for (int height = -1; height < 40; ++height) {
        const QStringList lines = Draw(noted, view, {false, coloured}, {width, height, true});
        EXPECT_LE(lines.size(), std::max(1, height));
        for (const QString& line : lines) {
          EXPECT_LE(WithoutColours(line).size(), std::max(1, width)) << width << 'x' << height;
        }
      }
    }
  }
}

}  // namespace
}  // namespace korvax::client
