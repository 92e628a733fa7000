#include "client/ScopePicture.h"

#include <gmock/gmock.h>

#include <cmath>

namespace korvax::client {
namespace {

const Heading heading{QStringLiteral("scope2"), QStringLiteral("Ctrl-C ends"), {}};

ScopePicture Of(Trace analog, std::vector<Trace> digital = {}) {
  return {heading, {{0, {std::move(analog), std::move(digital)}}}};
}

/// The lines as one text that begins with a line end, as a raw string literal does.
std::string Drawn(const ScopePicture& picture, const PanelRoom& room) {
  return '\n' + Draw(picture, room).join(QLatin1Char('\n')).toStdString() + '\n';
}

/// A pulse of 1000 samples on a base line, and when it is above a threshold.
ScopeChannel Pulse() {
  ScopeChannel channel;
  Trace above;
  for (int sample = 0; sample < 1000; ++sample) {
    const double time = sample - 250;
    const double value = time < 0 ? 512 : 512 + 3000 * (std::exp(-time / 150) - std::exp(-time / 10));
    channel.traces.analog.push_back(std::round(value));
    above.push_back(value > 1000 ? 1 : 0);
  }
  channel.traces.digital = {above, Trace(1000, 1)};
  return channel;
}

TEST(ScopePicture, drawsAPulseAndItsDigitalTraces) {
  EXPECT_EQ(Drawn({heading, {Pulse()}}, {60, 14}), R"(
scope2                                           Ctrl-C ends
channel 0 · 1000 samples · 512 to 2820
  4000 ┤
       │
       │             ⡴⠦⣄
       │            ⢀⡇ ⠈⠳⣄
  2000 ┤            ⢸    ⠈⠓⠦⣄⡀
       │            ⢸        ⠉⠓⠦⢤⣀⣀
       │⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣸             ⠈⠉⠉⠓⠒⠒⠲⠤⠤⠤⠤⠤⠤⠤⢤⣀⣀⣀⣀⣀⣀⣀⣀⣀
       │
     0 └┬─────────┬─────────┬─────────┬─────────┬─────────
sample  0        200       400       600       800
    D0  ▁▁▁▁▁▁▁▁▁▁▁▁▒█████████████▒▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁
    D1  ██████████████████████████████████████████████████
)");
}

TEST(ScopePicture, samplesWithRoomFillSeveralColumnsOfDotsAndJoin) {
  EXPECT_EQ(Drawn(Of({0, 10, 5, -5}, {{0, 1, 1, 0}}), {30, 8}), R"(
scope2             Ctrl-C ends
channel 0 · 4 samples
    10 ┤     ⢸⠉⠉⠉⠉⠉⣇⣀⣀⣀⣀⣀
     0 ┤⠒⠒⠒⠒⠒⠚          ⢸
       │                ⠈⠉⠉⠉⠉⠉
   -10 └──┬─────┬────┬─────┬──
sample    0     1    2     3
    D0  ▁▁▁▁▁▒██████████▒▁▁▁▁▁
)");
}

TEST(ScopePicture, aSingleSampleAmongManyIsSeen) {
  Trace trace(100000, 2000);
  trace[50000] = 4000;
  trace[75000] = 0;
  EXPECT_EQ(Drawn(Of(trace), {50, 9}), R"(
scope2                                 Ctrl-C ends
channel 0 · 100000 samples · 0 to 4000
  4000 ┤                    ⢸
       │                    ⢸
  2000 ┤⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠚⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⡖⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒
       │                               ⡇
       │                               ⡇
     0 └┬───────┬───────┬────────┬───────┬────────
sample  0     20000   40000    60000   80000
)");
}

TEST(ScopePicture, aFlatTraceIsALine) {
  EXPECT_EQ(Drawn(Of(Trace(8, 512)), {40, 7}), R"(
scope2                       Ctrl-C ends
channel 0 · 8 samples · 512 to 512
 512.5 ┤
       │
       │⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀
   512 └─┬───┬───┬───┬───┬───┬───┬───┬──
sample   0   1   2   3   4   5   6   7
)");
  EXPECT_EQ(Drawn(Of(Trace(8, 0)), {40, 7}), R"(
scope2                       Ctrl-C ends
channel 0 · 8 samples · 0 to 0
   0.5 ┤
       │
       │⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀
     0 └─┬───┬───┬───┬───┬───┬───┬───┬──
sample   0   1   2   3   4   5   6   7
)");
}

TEST(ScopePicture, aTitleWithoutStateHasNoBlanksAtItsEnd) {
  EXPECT_EQ(Draw({{QStringLiteral("scope2"), {}, {}}, {}}, {}).first(), "scope2");
}

TEST(ScopePicture, aSingleSample) {
  EXPECT_EQ(Drawn(Of({7}, {{1}}), {40, 8}), R"(
scope2                       Ctrl-C ends
channel 0 · 1 sample · 7 to 7
   7.5 ┤
       │
       │⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀⣀
     7 └───────────────┬────────────────
sample                 0
    D0  ████████████████████████████████
)");
}

TEST(ScopePicture, aChannelWithoutSamplesSaysSo) {
  EXPECT_EQ(Drawn(Of({}, {{}}), {70, 8}), R"(
scope2                                                     Ctrl-C ends
channel 0 · 0 samples
This channel has no samples: see "sample_number" in the configuration.
)");
}

TEST(ScopePicture, narrowPicturesLeaveOutWhatDoesNotFit) {
  EXPECT_EQ(Drawn(Of({1, 2, 3, 4}), {20, 8}), R"(
scope2    Ctrl-C en…
channel 0
     4 ┤         ⡏⠉⠉
       │   ⣀⣀⣀⡏⠉⠉⠁
     2 ┤⣀⣀⣀⡇
       │
     0 └─┬─────┬────
sample   0     2
)");
  EXPECT_EQ(Drawn(Of({1, 2, 3, 4}), {11, 8}), R"(
…ope2 Ctrl…
channel 0
Too narrow…
)");
}

TEST(ScopePicture, fitsIntoAnySize) {
  ScopePicture picture{heading, {Pulse(), Pulse()}};
  picture.heading.notes << QStringLiteral("some note");
  for (int width = -1; width < 100; ++width) {
    for (int height = -1; height < 40; ++height) {
      const QStringList lines = Draw(picture, {width, height, true});
      EXPECT_LE(lines.size(), std::max(1, height));
      for (const QString& line : lines) {
        EXPECT_LE(line.size(), std::max(1, width)) << width << 'x' << height << ": " << line.toStdString();
      }
    }
  }
}

TEST(ScopePicture, moreDigitalTracesThanLinesAreCutOff) {
  ScopePicture picture = Of(Trace(10, 1), std::vector<Trace>(32, Trace(10, 0)));
  EXPECT_EQ(Draw(picture, {60, 24, true}).size(), 24);
  EXPECT_EQ(Draw(picture, {60, 24, false}).size(), 1 + 3 + 1 + 32) << "what scrolls needs no room";
}

TEST(ScopePicture, severalChannelsShareTheHeight) {
  ScopePicture picture{heading, {Pulse(), Pulse(), Pulse()}};
  picture.channels[1].channel = 3;
  EXPECT_EQ(Drawn(picture, {60, 20, true}), R"(
scope2                                           Ctrl-C ends
No room for 1 of 3 channels: make the terminal taller.
channel 0 · 1000 samples · 512 to 2820
  4000 ┤
       │            ⢀⡞⠓⠦⢤⣀
  2000 ┤            ⢸    ⠈⠉⠓⠒⠦⠤⢤⣀⣀⣀⡀
       │⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠚              ⠉⠉⠉⠉⠉⠉⠉⠙⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒
     0 └┬─────────┬─────────┬─────────┬─────────┬─────────
sample  0        200       400       600       800
    D0  ▁▁▁▁▁▁▁▁▁▁▁▁▒█████████████▒▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁
    D1  ██████████████████████████████████████████████████
channel 3 · 1000 samples · 512 to 2820
  4000 ┤
       │            ⢀⡞⠓⠦⢤⣀
  2000 ┤            ⢸    ⠈⠉⠓⠒⠦⠤⢤⣀⣀⣀⡀
       │⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠚              ⠉⠉⠉⠉⠉⠉⠉⠙⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒⠒
     0 └┬─────────┬─────────┬─────────┬─────────┬─────────
sample  0        200       400       600       800
    D0  ▁▁▁▁▁▁▁▁▁▁▁▁▒█████████████▒▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁▁
    D1  ██████████████████████████████████████████████████
)");
}

}  // namespace
}  // namespace korvax::client
