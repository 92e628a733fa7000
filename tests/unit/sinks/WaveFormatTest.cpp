#include "sinks/WaveFormat.h"
#include "tests/unit/sinks/WaveFixture.h"

#include <cmath>
#include <limits>

namespace {

using korvax::TraceStore;
using test::FromHex;
using test::Waves;

constexpr double Infinity = std::numeric_limits<double>::infinity();

std::string Written(void (*append)(const TraceStore&, qint32, quint64, korvax::ByteWriter&),
                    const TraceStore& store, qint32 waves, quint64 timestamp) {
  korvax::ByteWriter out;
  append(store, waves, timestamp, out);
  return std::string(out.View());
}

std::string Bin(const TraceStore& store, qint32 waves, quint64 timestamp = 0) {
  return Written(korvax::wavefile::AppendBinary, store, waves, timestamp);
}
std::string Csv(const TraceStore& store, qint32 waves, quint64 timestamp = 0) {
  return Written(korvax::wavefile::AppendCsv, store, waves, timestamp);
}
std::string Json(const TraceStore& store, qint32 waves, quint64 timestamp = 0) {
  return Written(korvax::wavefile::AppendJson, store, waves, timestamp);
}

std::string Head(bool first) {
  korvax::ByteWriter out;
  korvax::wavefile::AppendBinaryHead(first, 0x0102030405060708, out);
  return std::string(out.View());
}

// Two channels of two samples and two digital traces.
TraceStore TwoChannels() {
  TraceStore store({.samples = 2, .channels = 2, .analog = 1, .digital = 2});
  store.Store(*Waves(2, {{{1.5, -2.75}, {0b101, 0b110}}, {{1234567, 0.1}, {0, 0b011}}}));
  return store;
}

// One channel of the given samples.
TraceStore Analog(const WaveSamples<double>& samples) {
  TraceStore store({.samples = static_cast<qint32>(samples.size()), .channels = 1, .analog = 1, .digital = 0});
  store.Store(*Waves(static_cast<qint32>(samples.size()), {{samples, {}}}));
  return store;
}

TEST(WaveFormat, aBinaryHeadIs16Bytes) {
  EXPECT_EQ(Head(true), FromHex("4b 56 58 53  00 00 00 00  08 07 06 05 04 03 02 01"));
  EXPECT_EQ(Head(false), FromHex("4b 56 58 4f  00 00 00 00  08 07 06 05 04 03 02 01"));
}

TEST(WaveFormat, aBinaryRecordIsNumbersAndThenSamplesAndWordsOfEachChannel) {
  EXPECT_EQ(Bin(TwoChannels(), 2, 0x0102030405060708),
            FromHex("02 00 00 00  02 00 00 00  01 00 00 00  02 00 00 00  00 00 00 00  01 00 00 00"
                    "08 07 06 05 04 03 02 01"
                    "00 00 00 00 00 00 f8 3f  00 00 00 00 00 00 06 c0  01 00 00 00  02 00 00 00"
                    "00 00 00 00 87 d6 32 41  9a 99 99 99 99 99 b9 3f  00 00 00 00  03 00 00 00"));
}

TEST(WaveFormat, aRecordHoldsTheFirstChannelsOfTheStore) {
  EXPECT_EQ(Bin(TwoChannels(), 1, 5),
            FromHex("01 00 00 00  02 00 00 00  01 00 00 00  02 00 00 00  00 00 00 00  01 00 00 00"
                    "05 00 00 00 00 00 00 00"
                    "00 00 00 00 00 00 f8 3f  00 00 00 00 00 00 06 c0  01 00 00 00  02 00 00 00"));
  EXPECT_EQ(Csv(TwoChannels(), 1, 5), "1,2,1,2,5,1.5,-2.75,1,2,\n");
  EXPECT_EQ(Json(TwoChannels(), 1, 5),
            R"({"n_channels":1,"n_samples":2,"n_analog":1,"n_digital":2,"timestamp":5,"channels":[)"
            R"({"analog_traces": [1,-2],"digital_traces": [1,2]}]})");
}

TEST(WaveFormat, aCsvRecordIsALineThatEndsInAComma_isKept) {
  EXPECT_EQ(Csv(TwoChannels(), 2, 0xFFFF'FFFF'FFFF'FFFF),
            "2,2,1,2,18446744073709551615,1.5,-2.75,1,2,1.23457e+06,0.1,0,3,\n");
}

TEST(WaveFormat, aJsonRecordHasChannelsOfTruncatedSamples) {
  EXPECT_EQ(Json(TwoChannels(), 2, 0xFFFF'FFFF'FFFF'FFFF),
            R"({"n_channels":2,"n_samples":2,"n_analog":1,"n_digital":2,"timestamp":18446744073709551615,)"
            R"("channels":[{"analog_traces": [1,-2],"digital_traces": [1,2]},)"
            R"({"analog_traces": [1234567,0],"digital_traces": [0,3]}]})");
}

TEST(WaveFormat, aJsonRecordWithoutChannelsStaysOpen_isKept) {
  EXPECT_EQ(Json(TwoChannels(), 0, 7),
            R"({"n_channels":0,"n_samples":2,"n_analog":1,"n_digital":2,"timestamp":7,"channels":[)");
  EXPECT_EQ(Csv(TwoChannels(), 0, 7), "0,2,1,2,7,\n");
  EXPECT_EQ(Bin(TwoChannels(), 0, 7), FromHex("00 00 00 00  02 00 00 00  01 00 00 00  02 00 00 00"
                                              "00 00 00 00  01 00 00 00  07 00 00 00 00 00 00 00"));
}

TEST(WaveFormat, jsonSamplesAreTruncatedTowardZero) {
  const struct {
    double sample;
    const char* text;
  } cases[] = {{1.999, "1"},
               {-1.999, "-1"},
               {-0.999, "0"},
               {0.999, "0"},
               {-0.0, "0"},
               {2147483647.9, "2147483647"},
               {-2147483648.9, "-2147483648"}};
  for (const auto& [sample, text] : cases) {
    EXPECT_EQ(Json(Analog({sample}), 1),
              std::string(R"({"n_channels":1,"n_samples":1,"n_analog":1,"n_digital":0,"timestamp":0,"channels":[)"
                          R"({"analog_traces": [)") +
                  text + R"(],"digital_traces": [0]}]})");
  }
}

TEST(WaveFormat, jsonSamplesThatNoIntegerHoldsBecomeTheMostNegative_isKept) {
  for (const double sample : {2147483648.0, 3e9, -3e9, 1e300, -1e300, Infinity, -Infinity, std::nan("")}) {
    EXPECT_EQ(Json(Analog({sample}), 1),
              R"({"n_channels":1,"n_samples":1,"n_analog":1,"n_digital":0,"timestamp":0,"channels":[)"
              R"({"analog_traces": [-2147483648],"digital_traces": [0]}]})")
        << sample;
  }
}

TEST(WaveFormat, otherFormsHoldWhateverTheSamplesAre) {
  const TraceStore store = Analog({3e9, 1e300, Infinity, -Infinity, std::nan(""), -0.0, 0.000012345678});
  EXPECT_EQ(Csv(store, 1), "1,7,1,0,0,3e+09,1e+300,inf,-inf,nan,-0,1.23457e-05,0,0,0,0,0,0,0,\n");
  EXPECT_EQ(Bin(Analog({Infinity, -0.0}), 1).substr(32),
            FromHex("00 00 00 00 00 00 f0 7f  00 00 00 00 00 00 00 80  00 00 00 00  00 00 00 00"));
}

TEST(WaveFormat, aRecordWithoutSamplesHasEmptyChannels) {
  const TraceStore store({.samples = 0, .channels = 2, .analog = 1, .digital = 1});
  EXPECT_EQ(Csv(store, 2), "2,0,1,1,0,\n");
  EXPECT_EQ(Json(store, 2),
            R"({"n_channels":2,"n_samples":0,"n_analog":1,"n_digital":1,"timestamp":0,"channels":[)"
            R"({"analog_traces": [],"digital_traces": []},{"analog_traces": [],"digital_traces": []}]})");
  EXPECT_EQ(Bin(store, 2).size(), 32U);
}

TEST(WaveFormat, aRecordHasOneAnalogTraceAChannelWhateverTheirNumber) {
  TraceStore two({.samples = 1, .channels = 2, .analog = 2, .digital = 1});
  two.Store(*Waves(1, {{{5}, {1}}, {{6}, {1}}}));
  EXPECT_EQ(Csv(two, 2), "2,1,2,1,0,5,1,6,1,\n");
  TraceStore none({.samples = 1, .channels = 2, .analog = 0, .digital = 1});
  none.Store(*Waves(1, {{{5}, {1}}, {{6}, {1}}}));
  EXPECT_EQ(Csv(none, 2), "2,1,0,1,0,5,1,0,0,\n");  // no room for the second channel
}

TEST(WaveFormat, aBinaryRecordHas32BytesAnd12ASampleOfEachChannel) {
  const TraceStore store({.samples = 7, .channels = 3, .analog = 1, .digital = 4});
  EXPECT_EQ(Bin(store, 3).size(), 32U + 3 * 7 * 12);
}

}  // namespace
