#include "simulator/ConnectionString.h"

#include <gtest/gtest.h>

using namespace korvax::sim;

TEST(ConnectionString, HasDefaultsForEverything) {
  const auto settings = ParseConnectionString("sim:array");
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->mode, Mode::Array);
  EXPECT_EQ(settings->generator.channels, 8U);
  EXPECT_EQ(settings->generator.rate, 20000.0);
  EXPECT_EQ(settings->generator.source, RadioactiveSource::Cs137);
  EXPECT_EQ(settings->generator.seed, 1U);
  EXPECT_EQ(settings->generator.coincidence, 0.2);
  EXPECT_EQ(settings->openResult, 0);
}

TEST(ConnectionString, SetsUpAnArray) {
  const auto settings = ParseConnectionString(
      "sim:array?channels=16&rate=1.5e3&source=Co-60&seed=18446744073709551615&coincidence=0.5&gain=2.5"
      "&disorder=7&queue=11&block=12&t0=0&counters_interval=250&wave_rate=3&samples=64");
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->generator.channels, 16U);
  EXPECT_EQ(settings->generator.rate, 1500.0);
  EXPECT_EQ(settings->generator.source, RadioactiveSource::Co60);
  EXPECT_EQ(settings->generator.seed, 18446744073709551615U);
  EXPECT_EQ(settings->generator.coincidence, 0.5);
  EXPECT_EQ(settings->generator.gain, 2.5);
  EXPECT_EQ(settings->generator.disorder, 7U);
  EXPECT_EQ(settings->detector.queue, 11U);
  EXPECT_EQ(settings->detector.block, 12U);
  EXPECT_EQ(settings->detector.t0Rate, 0.0);
  EXPECT_EQ(settings->detector.countersIntervalNs, 250'000'000U);
  EXPECT_EQ(settings->waveRate, 3.0);
  EXPECT_EQ(settings->samples, 64U);
}

TEST(ConnectionString, SetsUpAScene) {
  const auto pixels = ParseConnectionString("sim:array?channels=256&scene=pixels&columns=32");
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->generator.scene, Scene::Pixels);
  EXPECT_EQ(pixels->generator.columns, 32U);
  EXPECT_EQ(pixels->generator.coincidence, 0.2);
  const auto none = ParseConnectionString("sim:array?scene=none");
  ASSERT_TRUE(none);
  EXPECT_EQ(none->generator.scene, Scene::None);
  EXPECT_TRUE(ParseConnectionString("sim:array?columns=8&scene=pixels&channels=8"));
}

TEST(ConnectionString, PairsTheHitsOfStripsButForNoiseWhereNotToldOtherwise) {
  const auto strips = ParseConnectionString("sim:array?scene=strips&channels=32");
  ASSERT_TRUE(strips);
  EXPECT_EQ(strips->generator.scene, Scene::Strips);
  EXPECT_EQ(strips->generator.coincidence, 0.9);
  for (const char* text : {"sim:array?coincidence=0.2&scene=strips", "sim:array?scene=strips&coincidence=0.2"}) {
    EXPECT_EQ(ParseConnectionString(text)->generator.coincidence, 0.2) << text;
  }
}

TEST(ConnectionString, SetsUpAReplay) {
  const auto settings = ParseConnectionString("sim:replay?file=/a b/c=d?.bin&speed=0&loop=1&block=10");
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->mode, Mode::Replay);
  EXPECT_EQ(settings->file, "/a b/c=d?.bin");
  EXPECT_EQ(settings->speed, 0.0);
  EXPECT_TRUE(settings->loop);
}

TEST(ConnectionString, SetsUpFullLoadAndMisbehaviour) {
  const auto settings = ParseConnectionString(
      "sim:full?channels=64&events=1000&blocks=5&groups=2&open=-77&fail_read=3&empty=4&negative=5"
      "&null=6&huge=7&hang_read=8:30&fail_from=9:0.5&crash_free=10");
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->mode, Mode::Full);
  EXPECT_EQ(settings->generator.channels, 64U);
  EXPECT_EQ(settings->events, 1000U);
  EXPECT_EQ(settings->blocks, 5U);
  EXPECT_EQ(settings->groups, 2U);
  EXPECT_EQ(settings->openResult, -77);
  EXPECT_EQ(settings->failRead, 3U);
  EXPECT_EQ(settings->emptyRead, 4U);
  EXPECT_EQ(settings->negativeRead, 5U);
  EXPECT_EQ(settings->nullRead, 6U);
  EXPECT_EQ(settings->hugeRead, 7U);
  EXPECT_EQ(settings->hang.read, 8U);
  EXPECT_EQ(settings->hang.seconds, 30.0);
  EXPECT_EQ(settings->failing.read, 9U);
  EXPECT_EQ(settings->failing.seconds, 0.5);
  EXPECT_EQ(settings->crashFree, 10U);
}

namespace {

// One fault each.
constexpr const char* BadStrings[] = {
    "",
    "sim",
    "sim:",
    "sim:other",
    "array",
    "usb:array",
    "SIM:array",
    "sim:array?",
    "sim:array?&",
    "sim:array?channels",
    "sim:array?channels=",
    "sim:array?channels=0",
    "sim:array?channels=257",
    "sim:array?channels=-1",
    "sim:array?channels=8x",
    "sim:array?channels= 8",
    "sim:array?channels=8.5",
    "sim:array?rate=0",
    "sim:array?rate=nan",
    "sim:array?rate=inf",
    "sim:array?rate=1000001",
    "sim:array?source=Cs137",
    "sim:array?seed=-1",
    "sim:array?seed=18446744073709551616",
    "sim:array?coincidence=1.01",
    "sim:array?gain=0",
    "sim:array?gain=1001",
    "sim:replay?file=/x&gain=4",
    "sim:array?channels=8&channels=8",
    "sim:array?channels=8&&rate=5",
    "sim:array?colour=red",
    "sim:array?Channels=8",
    "sim:array?file=/x",
    "sim:array?loop=1",
    "sim:array?events=5",
    "sim:full?speed=1",
    "sim:replay?file=",
    "sim:replay?rate=5&file=/x",
    "sim:replay?file=/x&loop=2",
    "sim:full?events=0",
    "sim:array?open=0",
    "sim:array?open=5",
    "sim:array?open=yes",
    "sim:array?fail_read=-1",
    "sim:array?null=-1",
    "sim:array?huge=x",
    "sim:array?crash_free=-1",
    "sim:array?hang_read=5",
    "sim:array?hang_read=0:5",
    "sim:array?hang_read=:5",
    "sim:array?hang_read=5:",
    "sim:array?fail_from=5:-1",
    "sim:array?fail_from=5:86401",
    "sim:array?fail_from=5:1:1",
    "sim:array?samples=8",
    "sim:array?scene=",
    "sim:array?scene=pixel",
    "sim:array?scene=1",
    "sim:full?scene=pixels",
    "sim:full?columns=4",
    "sim:replay?file=/x&scene=pixels",
    "sim:array?scene=pixels&columns=0",
    "sim:array?scene=pixels&columns=x",
    "sim:array?scene=pixels&columns=257&channels=256",
    "sim:array?scene=pixels&columns=9",
    "sim:array?channels=8&columns=9&scene=pixels",
    "sim:array?columns=4",
    "sim:array?scene=none&columns=4",
    "sim:array?scene=strips&columns=4",
    "sim:array?scene=strips&channels=7",
    "sim:array?channels=1&scene=strips",
    "sim:array?queue=0",
};

}  // namespace

TEST(ConnectionString, IsRefusedWithAnUnknownModeOrKeyOrABadValue) {
  for (const char* text : BadStrings) {
    EXPECT_FALSE(ParseConnectionString(text)) << text;
  }
}
