#include "client/ColumnLayout.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FitRow {
  std::size_t bins;
  std::size_t room;
  std::size_t binsPerColumn;
  std::size_t columnsPerBin;
  std::size_t columns;
};

class Fit : public testing::TestWithParam<FitRow> {};

TEST_P(Fit, givesEveryColumnTheSameShare) {
  const FitRow& row = GetParam();
  const ColumnLayout layout = ColumnLayout::Fit(row.bins, row.room);
  EXPECT_EQ(layout.bins, row.bins);
  EXPECT_EQ(layout.binsPerColumn, row.binsPerColumn);
  EXPECT_EQ(layout.columnsPerBin, row.columnsPerBin);
  EXPECT_EQ(layout.columns, row.columns);
  EXPECT_LE(layout.columns, row.room);
}

INSTANTIATE_TEST_SUITE_P(ColumnLayout, Fit,
                         testing::Values(FitRow{0, 74, 1, 1, 0}, FitRow{10, 0, 1, 1, 0}, FitRow{1, 74, 1, 74, 74},
                                         FitRow{74, 74, 1, 1, 74}, FitRow{75, 74, 2, 1, 38},
                                         FitRow{30, 74, 1, 2, 60}, FitRow{16384, 74, 222, 1, 74},
                                         FitRow{16384, 1, 16384, 1, 1}));

TEST(ColumnLayout, aColumnIsTheSumOfItsBinsAndTheLastMayBeShorter) {
  const std::vector<quint32> counts{1, 2, 3, 4, 5, 6, 7};
  EXPECT_THAT(ColumnLayout::Fit(7, 3).Sums(counts), ElementsAre(6, 15, 7));
}

TEST(ColumnLayout, aBinThatHasRoomFillsSeveralColumns) {
  const std::vector<quint32> counts{1, 2};
  EXPECT_THAT(ColumnLayout::Fit(2, 5).Sums(counts), ElementsAre(1, 1, 2, 2));
}

TEST(ColumnLayout, sumsOfFullCountersDoNotOverflow) {
  const std::vector<quint32> counts(4, 4294967295U);
  EXPECT_THAT(ColumnLayout::Fit(4, 1).Sums(counts), ElementsAre(17179869180U));
}

TEST(ColumnLayout, noBinsGiveNoColumns) {
  EXPECT_THAT(ColumnLayout::Fit(0, 10).Sums({}), IsEmpty());
}

TEST(ColumnLayout, findsTheMiddleOfABin) {
  EXPECT_EQ(ColumnLayout::Fit(100, 10).ColumnOf(0), 0U);
  EXPECT_EQ(ColumnLayout::Fit(100, 10).ColumnOf(99), 9U);
  EXPECT_EQ(ColumnLayout::Fit(2, 10).ColumnOf(0), 2U);
  EXPECT_EQ(ColumnLayout::Fit(2, 10).ColumnOf(1), 7U);
}

TEST(ColumnLayout, aRoundStepTakesTheRoomThatIsAskedFor) {
  EXPECT_EQ(ColumnLayout::Fit(10, 10).RoundStep(4), 5U);
  EXPECT_EQ(ColumnLayout::Fit(10, 10).RoundStep(1), 1U);
  EXPECT_EQ(ColumnLayout::Fit(10, 30).RoundStep(4), 2U) << "3 columns a bin";
  EXPECT_EQ(ColumnLayout::Fit(160, 10).RoundStep(2), 50U) << "16 bins a column";
}

}  // namespace
}  // namespace korvax::client
