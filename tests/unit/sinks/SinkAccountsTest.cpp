#include "sinks/Histogram.h"
#include "tests/unit/sinks/AnalysisSinks.h"

#include <map>

namespace {

using korvax::Fate;

// What became of the records of a sink that is done with all it was fed.
template <typename Block>
class Account : public test::Sink<Block> {
public:
  using test::Sink<Block>::Sink;

  template <typename... Records>
  void Feed(Records... records) {
    ASSERT_TRUE(this->feed.Push(test::MessageOf(std::move(records)...)));
  }
  /// Of each fate so many, and of no other; all that was fed.
  void Expect(const std::map<Fate, quint64>& expected) {
    ASSERT_TRUE(test::WaitFor([this] {
      this->block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return this->block.Records()->Get().received == this->feed.Counts().pushed;
    }));
    const korvax::Account::Statement statement = this->block.Records()->Get();
    quint64 sum = 0;
    for (const auto& [fate, records] : expected) {
      EXPECT_EQ(statement.fates[fate], records) << korvax::NameOf(fate);
      sum += records;
    }
    EXPECT_EQ(statement.fates.Sum(), sum) << "a record has another fate";
    EXPECT_EQ(statement.received, sum);
    EXPECT_EQ(statement.waiting, 0U);
    EXPECT_EQ(statement.made, 0U);
  }
  void ExpectFates(const std::vector<Fate>& fates) const {
    EXPECT_EQ(this->block.Records()->PossibleFates(), fates);
  }
};

template <typename Block>
void FeedOneOfEach(Account<Block>& account) {
  account.Feed(test::Energy(0, 1), test::Watched([] {}), test::Energy(0, 2));
  account.Feed();
  ASSERT_TRUE(account.feed.Push({}));
}

using Spectrum = Account<Histogram>;
using Times = Account<time_distribution>;
using Positions = Account<Position>;
using Images = Account<Image>;

TEST(ASpectrumsAccount, hasWhatArrivedWhileItWasStopped) {
  Spectrum spectrum({{"bin_number", "16"}, {"ch_number", "2"}});
  spectrum.ExpectFates({Fate::Counted, Fate::Cut, Fate::WhileStopped, Fate::Other});
  FeedOneOfEach(spectrum);
  spectrum.Expect({{Fate::WhileStopped, 3}});
  spectrum.Run();
  FeedOneOfEach(spectrum);
  spectrum.Expect({{Fate::WhileStopped, 3}, {Fate::Counted, 2}, {Fate::Other, 1}});
}

TEST(ASpectrumsAccount, hasWhatTheCutsLeaveOut) {
  Spectrum spectrum({{"bin_number", "16"}, {"ch_number", "2"}, {"energy_cut_min", "3"}, {"energy_cut_max", "5"}});
  spectrum.Run();
  for (quint32 energy = 0; energy < 20; ++energy) {
    spectrum.Feed(test::Energy(0, energy));
  }
  spectrum.Expect({{Fate::Counted, 3}, {Fate::Cut, 17}});
}

TEST(ASpectrumsAccount, countsAsManyAsItsBinsHold) {
  Spectrum spectrum({{"bin_number", "4"}, {"ch_number", "1"}});
  spectrum.Run();
  spectrum.Feed(test::Energy(0, 1), test::Energy(9, 1), test::Energy(0, 4'000'000'000));
  spectrum.Expect({{Fate::Counted, 3}});  // clamped to the edges
  int total = 0;
  const QJsonArray bins = test::Array(spectrum.Channel(0).toUtf8())[0].toObject()["data"].toArray();
  for (const QJsonValue& bin : bins) {
    total += bin.toInt();
  }
  EXPECT_EQ(total, 3);
}

TEST(ASpectrumsAccount, withoutBinsHasAllAsOther) {
  Spectrum spectrum({{"bin_number", "0"}, {"ch_number", "2"}});
  spectrum.Run();
  FeedOneOfEach(spectrum);
  spectrum.Expect({{Fate::Other, 3}});
}

TEST(ATimeDistributionsAccount, hasWhatHasNoBin) {
  Times times({{"bin_number", "8"}, {"ch_number", "2"}, {"binning", "10"}});
  times.ExpectFates({Fate::Counted, Fate::OutOfRange, Fate::Other});
  times.Feed(test::Energy(0, 0, 14), test::Energy(0, 0, ~quint64{0}), test::Watched([] {}));
  times.Expect({{Fate::Counted, 1}, {Fate::OutOfRange, 1}, {Fate::Other, 1}});
}

TEST(ATimeDistributionsAccount, withoutBinningHasAllOutOfRange) {
  Times times({{"bin_number", "8"}, {"ch_number", "2"}});
  times.Feed(test::Energy(0, 0, 14), test::Energy(0, 0, 15));
  times.Expect({{Fate::OutOfRange, 2}});
}

TEST(ATimeDistributionsAccount, withoutBinsHasAllAsOther) {
  Times times({{"bin_number", "8"}, {"ch_number", "0"}, {"binning", "10"}});
  FeedOneOfEach(times);
  times.Expect({{Fate::Other, 3}});
}

TEST(APositionMapsAccount, hasWhatArrivedWhileItWasStopped) {
  Positions positions(test::PositionKind::Settings());
  positions.ExpectFates(
      {Fate::Counted, Fate::Cut, Fate::OutOfRange, Fate::RepeatedChannel, Fate::WhileStopped, Fate::Other});
  positions.Feed(test::Energy(0, 100), test::Energy(1, 300));
  positions.Expect({{Fate::WhileStopped, 2}});
  positions.Run();
  positions.Feed(test::Energy(0, 100), test::Watched([] {}), test::Energy(1, 300));
  positions.Expect({{Fate::WhileStopped, 2}, {Fate::Counted, 2}, {Fate::Other, 1}});
}

TEST(APositionMapsAccount, hasGroupsThatHaveAChannelTwice) {
  Positions positions(test::PositionKind::Settings());
  positions.Run();
  positions.Feed(test::Energy(0, 100), test::Energy(1, 300), test::Energy(0, 50), test::Watched([] {}));
  positions.Feed(test::Energy(1, 300));
  positions.Expect({{Fate::RepeatedChannel, 3}, {Fate::Other, 1}, {Fate::OutOfRange, 1}});
}

TEST(APositionMapsAccount, hasEventsByTheBestThatBecameOfThem) {
  Positions positions(
      {{"positions", "[0,0]"}, {"correlated_channels", "[1,0]"}, {"y_positions", "4"}, {"energy_cut_max", "500"}});
  positions.Run();
  positions.Feed(test::Energy(0, 100), test::Energy(1, 300));  // a pair
  positions.Feed(test::Energy(0, 400), test::Energy(1, 300));  // above the cut
  positions.Feed(test::Energy(0, 0), test::Energy(1, 0));      // has no place without energy
  positions.Feed(test::Energy(1, 300));                        // alone
  positions.Feed(test::Energy(0, 100), test::Energy(1, 300), test::Energy(7, 1));
  positions.Expect({{Fate::Counted, 4}, {Fate::Cut, 2}, {Fate::OutOfRange, 4}});
}

TEST(APositionMapsAccount, withoutRowsHasAllAsOther) {
  Positions positions({{"positions", "[0,0]"}, {"correlated_channels", "[1,0]"}, {"y_positions", "0"}});
  positions.Run();
  FeedOneOfEach(positions);
  positions.Expect({{Fate::Other, 3}});
}

TEST(AnImagesAccount, hasWhatHasNoPixel) {
  Images image(test::ImageKind::Settings());  // 4 pixels
  image.ExpectFates({Fate::Counted, Fate::OutOfRange, Fate::WhileStopped, Fate::Other});
  image.Feed(test::Energy(0, 1));
  image.Expect({{Fate::WhileStopped, 1}});
  image.Run();
  image.Feed(test::Energy(0, 1), test::Energy(3, 1), test::Energy(4, 1), test::Energy(~quint32{0}, 1),
             test::Watched([] {}));
  image.Expect({{Fate::WhileStopped, 1}, {Fate::Counted, 2}, {Fate::OutOfRange, 2}, {Fate::Other, 1}});
}

TEST(AnImagesAccount, withoutPixelsHasAllAsOther) {
  Images image({{"x_positions", "[]"}, {"y_positions", "[0,0]"}});
  image.Run();
  FeedOneOfEach(image);
  image.Expect({{Fate::Other, 3}});
}

}  // namespace
