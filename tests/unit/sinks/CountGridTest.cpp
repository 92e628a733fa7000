#include "framework/ByteWriter.h"
#include "sinks/CountGrid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <thread>

namespace {

using korvax::CountGrid;

std::string Channel(const CountGrid& histogram, qint32 channel) {
  korvax::ByteWriter out;
  histogram.AppendRow(channel, out);
  return std::string(out.View());
}

// Counting to 2^32 one by one would take minutes under a sanitizer, so this opens the counters to the test.
quint32* CountersOf(const CountGrid& histogram);

template <auto Counters>
struct Open {
  friend quint32* CountersOf(const CountGrid& histogram) { return (histogram.*Counters).get(); }
};
template struct Open<&CountGrid::counters_>;

TEST(CountGrid, startsWithZeros) {
  const CountGrid histogram(2, 3);
  EXPECT_FALSE(histogram.IsEmpty());
  EXPECT_EQ(histogram.Rows(), 2);
  EXPECT_EQ(histogram.Columns(), 3);
  EXPECT_EQ(Channel(histogram, 0), "0,0,0");
  EXPECT_EQ(Channel(histogram, 1), "0,0,0");
}

TEST(CountGrid, countsEachChannelAndBinForItself) {
  CountGrid histogram(3, 2);
  histogram.Count(0, 0);
  histogram.Count(1, 1);
  histogram.Count(1, 1);
  histogram.Count(2, 0);
  EXPECT_EQ(Channel(histogram, 0), "1,0");
  EXPECT_EQ(Channel(histogram, 1), "0,2");
  EXPECT_EQ(Channel(histogram, 2), "1,0");
  EXPECT_EQ(histogram.At(1, 1), 2U);
}

TEST(CountGrid, wrapsAt2To32) {
  CountGrid histogram(1, 1);
  CountersOf(histogram)[0] = 0xFFFFFFFE;
  histogram.Count(0, 0);
  EXPECT_EQ(histogram.At(0, 0), 0xFFFFFFFFU);
  histogram.Count(0, 0);
  EXPECT_EQ(histogram.At(0, 0), 0U);
  histogram.Count(0, 0);
  EXPECT_EQ(histogram.At(0, 0), 1U);
}

TEST(CountGrid, showsCountsAsSignedDecimals_isKept) {
  CountGrid histogram(1, 4);
  CountersOf(histogram)[0] = 0x7FFFFFFF;
  CountersOf(histogram)[1] = 0x80000000;
  CountersOf(histogram)[2] = 0xFFFFFFFF;
  CountersOf(histogram)[3] = 12;
  EXPECT_EQ(Channel(histogram, 0), "2147483647,-2147483648,-1,12");
}

TEST(CountGrid, resetClearsEveryCounter) {
  CountGrid histogram(2, 2);
  histogram.Count(0, 0);
  histogram.Count(1, 1);
  histogram.Reset();
  EXPECT_EQ(Channel(histogram, 0), "0,0");
  EXPECT_EQ(Channel(histogram, 1), "0,0");
  histogram.Count(1, 1);
  EXPECT_EQ(Channel(histogram, 1), "0,1");
}

TEST(CountGrid, appendsToWhatTheBufferHolds) {
  const CountGrid histogram(1, 2);
  korvax::ByteWriter out;
  out.Text("counts: ");
  histogram.AppendRow(0, out);
  EXPECT_EQ(out.View(), "counts: 0,0");
}

TEST(CountGrid, withoutBinsOrChannelsOrBeyondTheLimitHoldsNothing) {
  constexpr qint32 Greatest = std::numeric_limits<qint32>::max();
  constexpr qint32 Least = std::numeric_limits<qint32>::min();
  struct Row {
    qint32 channels, bins;
  };
  for (const Row row : {Row{0, 0}, Row{0, 5}, Row{5, 0}, Row{-1, 5}, Row{5, -1}, Row{-5, -5}, Row{Least, Least},
                        Row{Greatest, Greatest}, Row{8192, 8193}, Row{1, Greatest}}) {
    CountGrid histogram(row.channels, row.bins);
    EXPECT_TRUE(histogram.IsEmpty()) << row.channels << " x " << row.bins;
    EXPECT_EQ(histogram.Rows(), row.channels);
    histogram.Reset();
    EXPECT_EQ(Channel(histogram, 0), "");
  }
}

TEST(CountGrid, isReadWhileAnotherThreadCounts) {
  CountGrid histogram(1, 2);
  std::thread counter([&histogram] {
    for (int i = 0; i < 50'000; ++i) {
      histogram.Count(0, 1);
    }
  });
  quint32 before = 0;
  for (int i = 0; i < 2'000; ++i) {
    const quint32 now = histogram.At(0, 1);
    EXPECT_GE(now, before);
    before = now;
  }
  counter.join();
  EXPECT_EQ(Channel(histogram, 0), "0,50000");
}

// The longest texts of all counters must fit one answer: a QString holds 2^30 - 1 characters at most.
TEST(CountGrid, atTheLimitFitsOneAnswer) {
  constexpr qint32 Few = 64;
  CountGrid few(1, Few);
  std::fill_n(CountersOf(few), Few, 0x80000000);
  const auto longestText = static_cast<qint64>(Channel(few, 0).size() + 1);  // and a comma before the next row
  ASSERT_FALSE(CountGrid(8192, 8192).IsEmpty());
  ASSERT_TRUE(CountGrid(8192, 8193).IsEmpty());
  EXPECT_LT(qint64{8192} * 8192 / Few * longestText, (qint64{1} << 30) - 1);
}

}  // namespace
