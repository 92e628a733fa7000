#include "tests/support/WaitFor.h"
#include "tests/system/DemoFixture.h"
#include "tests/system/SinkAnswers.h"

#include <numeric>

namespace test {

namespace {

// A rectangle of a map; the last two are outside.
struct Region {
  std::size_t left, top, right, bottom;
};

double Mean(const Counters& map, const Region& region) {
  double sum = 0.0;
  for (std::size_t row = region.top; row < region.bottom; ++row) {
    for (std::size_t column = region.left; column < region.right; ++column) {
      sum += map.at(row).at(column);
    }
  }
  return sum / static_cast<double>((region.right - region.left) * (region.bottom - region.top));
}

qint64 Total(const Counters& counters) {
  qint64 total = 0;
  for (const std::vector<int>& row : counters) {
    total = std::accumulate(row.begin(), row.end(), total);
  }
  return total;
}

void ExpectSize(const Counters& map, std::size_t rows, std::size_t columns) {
  EXPECT_EQ(map.size(), rows);
  for (const std::vector<int>& row : map) {
    ASSERT_EQ(row.size(), columns);
  }
}

// Every block of the demo with its data, as clients see it.
class DemoBlocksTest : public DemoFixture {
protected:
  void SetUp() override {
    ConfigureDemo(Form::Binary);
    StartAndWaitUntilReady();
    for (const char* block : {"board0/spectrum0", "board0/image0", "board1/spectrum1", "board1/position1",
                              "board1/times1", "pairs1/pairs1"}) {
      ASSERT_EQ(AskBlock(block, R"({"cmd":"run_control","status":"freerun"})"), Success) << block;
    }
  }

  Counters Image(const char* source) {
    return RowsIn(AskBlock("board0/image0", QByteArray(R"({"cmd":"get_data","source":")") + source + R"("})"));
  }
  Counters HeatMap() { return RowsIn(AskBlock("board1/position1", R"({"cmd":"get_data","source":"heatmap"})")); }
  Counters ChannelsOf(const char* block, int count) {
    QByteArray channels;
    for (int channel = 0; channel < count; ++channel) {
      channels += (channel == 0 ? "" : ",") + QByteArray::number(channel);
    }
    return ChannelsIn(AskBlock(block, R"({"cmd":"get_data","channels":[)" + channels + "]}"));
  }
  QJsonObject Rates(const char* source) {
    return Object(
        AskBlock("rates1/rates1", QByteArray(R"({"cmd":"get_data","source":")") + source + R"("})").toUtf8());
  }
  QString HighVoltage() {
    return Tell("hv1", QStringLiteral(R"({"args":[{"cmd":"get_all_ch_values","param":"all"}]})"));
  }
  int Recorded(const char* block) {
    return Array(Tell(QLatin1String(block), QStringLiteral(R"({"cmd":"get_dump_counts"})")).toUtf8())[0]
        .toObject()["recorded"]
        .toInt();
  }
};

TEST_F(DemoBlocksTest, OfEventsCountThemOnAllTheirChannels) {
  struct Row {
    const char* block;
    int channels;
    std::size_t bins;
  };
  for (const Row& row : {Row{"board0/spectrum0", 256, 2048}, Row{"board1/spectrum1", 32, 2048},
                         Row{"board1/times1", 32, 600}, Row{"pairs1/pairs1", 32, 2048}}) {
    Counters channels;
    EXPECT_TRUE(WaitFor([&] {
      channels = ChannelsOf(row.block, row.channels);
      return std::all_of(channels.begin(), channels.end(), [](const auto& bins) { return Total({bins}) > 0; });
    })) << row.block;
    EXPECT_EQ(channels.size(), static_cast<std::size_t>(row.channels)) << row.block;
    EXPECT_EQ(channels.at(0).size(), row.bins) << row.block;
  }
}

TEST_F(DemoBlocksTest, ShowTheImageAtOnceAndAllOfIt) {
  qint64 handedOut = 0;
  for (int reading = 0; reading < 3; ++reading) {
    Counters immediate;
    ASSERT_TRUE(WaitFor([&] {
      immediate = Image("immediate");
      return Total(immediate) > 0;
    }));
    ExpectSize(immediate, 16, 16);
    handedOut += Total(immediate);
    const Counters cumulative = Image("cumulative");
    ExpectSize(cumulative, 16, 16);
    EXPECT_GE(Total(cumulative), handedOut);
  }
}

// Counts are waited for, as many as make a picture.
TEST_F(DemoBlocksTest, ShowTheSpotAndTheBarInFrontOfThePixels) {
  const Region background{0, 0, 4, 16};
  Counters image;
  ASSERT_TRUE(WaitFor([&] {
    image = Image("cumulative");
    return Mean(image, background) > 50.0;
  }));
  EXPECT_GT(Mean(image, {9, 5, 12, 8}), 4.0 * Mean(image, background));
  EXPECT_LT(Mean(image, {4, 2, 7, 14}), 0.4 * Mean(image, background));
}

TEST_F(DemoBlocksTest, ShowTheSpotAndTheBarInFrontOfTheStrips) {
  const Region background{0, 10, 4, 54};
  Counters map;
  ASSERT_TRUE(WaitFor([&] {
    map = HeatMap();
    return Mean(map, background) > 5.0;
  }));
  ExpectSize(map, 64, 16);
  EXPECT_GT(Mean(map, {9, 24, 12, 31}), 4.0 * Mean(map, background));
  EXPECT_LT(Mean(map, {4, 15, 7, 48}), 0.4 * Mean(map, background));
}

TEST_F(DemoBlocksTest, ScatterThePointsOfTheStrips) {
  QJsonArray columns;
  QJsonArray shares;
  EXPECT_TRUE(WaitFor([&] {
    const QString answer = AskBlock("board1/position1", R"({"cmd":"get_data","source":"scatter"})");
    const QJsonArray data = Object(answer.toUtf8())["data"].toArray();
    columns = data[0].toObject()["x"].toArray();
    shares = data[1].toObject()["y"].toArray();
    return !columns.isEmpty();
  }));
  ASSERT_EQ(columns.size(), shares.size());
  for (int i = 0; i < columns.size(); ++i) {
    EXPECT_TRUE(columns[i].toInt(-1) >= 0 && columns[i].toInt(-1) < 16) << i;
    EXPECT_TRUE(shares[i].toDouble(-1) > 0.0 && shares[i].toDouble(-1) < 1.0) << i;
  }
}

TEST_F(DemoBlocksTest, ShowTheTracesOfAllChannels) {
  const QString all = QStringLiteral("1,").repeated(32).chopped(1);
  EXPECT_EQ(Tell("scope1", QStringLiteral(R"({"cmd":"set_channel","ch_enable":[%1]})").arg(all)), Success);
  constexpr std::size_t TracesOfOne = 4;  // an analog one and three digital ones
  Counters traces;
  EXPECT_TRUE(WaitFor([&] {
    traces = ChannelsIn(Tell("scope1", R"({"cmd":"require_data"})"));
    return Total(traces) != 0;
  }));
  ExpectSize(traces, 32 * TracesOfOne, 512);
}

TEST_F(DemoBlocksTest, ShowTheRatesOfAllChannels) {
  QJsonObject latest;
  EXPECT_TRUE(WaitFor([&] {
    latest = Rates("immediate");
    const std::vector<int> counts = RowIn(latest["counts_in"]);
    return !counts.empty() && *std::min_element(counts.begin(), counts.end()) > 0;
  }));
  EXPECT_EQ(latest["status"].toString(), QStringLiteral("ok"));
  EXPECT_EQ(latest["rates_in"].toArray().size(), 33) << "32 channels and T0";
  EXPECT_TRUE(WaitFor([&] { return Rates("data")["data"].toArray().size() > 1; }));
  const QString names = AskBlock("rates1/rates1", R"({"cmd":"get_channel_map"})");
  EXPECT_EQ(Object(names.toUtf8())["channel_map"].toArray()[32].toString(), QStringLiteral("T0"));
}

TEST_F(DemoBlocksTest, SwitchTheHighVoltageAndShowIt) {
  EXPECT_TRUE(HighVoltage().startsWith(QStringLiteral(R"({"response":"ok","HVSet":[800.0,800.0,750.0,700.0],)")))
      << qPrintable(HighVoltage());
  const QString off = QStringLiteral(R"("HVVoltage":[0.0,0.0,0.0,0.0])");
  EXPECT_TRUE(HighVoltage().contains(off)) << qPrintable(HighVoltage());
  EXPECT_EQ(Command("hv_on"), Success);
  EXPECT_TRUE(WaitFor([&] { return !HighVoltage().contains(off); }));
  EXPECT_EQ(Command("hv_off"), Success);
  EXPECT_TRUE(WaitFor([&] { return HighVoltage().contains(off); }));
}

TEST_F(DemoBlocksTest, TakeARunWhoseEventsTheDumperTells) {
  EXPECT_EQ(StartRun(1), Success);
  EXPECT_TRUE(WaitFor([this] { return StoredEvents() > 0 && Recorded("dumper1") > 0; }));
  EXPECT_EQ(Status(), 1);
  EXPECT_EQ(Command("stop_dump"), Success);
  EXPECT_TRUE(WaitFor([this] { return Status() == 0; }));
}

}  // namespace

}  // namespace test
