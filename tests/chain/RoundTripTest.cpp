#include "framework/KorvaxPayload_Waves.h"
#include "recording/ListRecorder.h"
#include "recording/RateRecorder.h"
#include "runfiles/FileType.h"
#include "sinks/WaveRecorder.h"
#include "tests/support/FakeClock.h"
#include "tests/support/Records.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace korvax::runfiles {
namespace {

// What the recorders write, the readers of run files give back: many records of each kind, in every form.
class RoundTrip : public testing::TestWithParam<Form> {
protected:
  RoundTrip() {
    EXPECT_TRUE(QDir(folder_.path()).mkdir("1"));
    control.StartRun([this](korvax::DumpSettings& settings) {
      settings = {.eventsPerFile = 1'000'000,
                  .dumpTime = -1,
                  .fileType = std::array{"BIN", "CSV", "JSON"}.at(static_cast<std::size_t>(GetParam())),
                  .filePath = folder_.path(),
                  .runId = "1"};
    });
  }

  std::string Path() const {
    const char* const extension = std::array{".bin", ".csv", ".json"}.at(static_cast<std::size_t>(GetParam()));
    return folder_.filePath(QStringLiteral("1/block_0") + extension).toStdString();
  }

  /// A number of any magnitude.
  quint64 Number() { return random_() >> (random_() % 64); }
  double Real() {
    return std::ldexp(static_cast<double>(random_() % 1'000'000), static_cast<int>(random_() % 40) - 20);
  }
  /// As text forms hold it, with 6 digits.
  static double AsText(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return std::strtod(text.data(), nullptr);
  }

  static constexpr int Records = 500;
  test::FakeClock clock;
  PinInput pin{"any"};
  korvax::DumpControl control{pin, {}};

private:
  QTemporaryDir folder_;
  std::mt19937_64 random_{20260101};
};

TEST_P(RoundTrip, GivesEventsBack) {
  korvax::RunStatistics statistics;
  korvax::ListRecorder recorder("block", control, statistics, clock);
  std::vector<KorvaxPayload_Energy> written;
  for (int i = 0; i < Records; ++i) {
    auto event = std::make_unique<KorvaxPayload_Energy>();
    event->timestamp = Number();
    event->channel = static_cast<quint32>(Number());
    event->energyRaw = static_cast<quint32>(Number());
    event->energy = Real();
    event->flag0 = static_cast<quint8>(i % 2);
    event->flag1 = static_cast<quint8>(i / 2 % 2);
    written.push_back(*event);
    recorder.Take(*test::MessageOf(std::move(event)).batch);
  }
  recorder.Finish();

  const auto reader = OpenList(Path(), GetParam());
  const bool isBinary = GetParam() == Form::Binary;
  for (const KorvaxPayload_Energy& event : written) {
    ListRecord read;
    ASSERT_TRUE(reader->Next(read)) << reader->Fault()->Text();
    EXPECT_EQ(read.timestamp, event.timestamp);
    EXPECT_EQ(read.channel, event.channel);
    EXPECT_EQ(read.energyRaw, event.energyRaw);
    EXPECT_EQ(read.energyRawAgain, isBinary ? event.energyRaw : 0);
    EXPECT_EQ(read.energyLowWord, isBinary ? static_cast<quint32>(std::bit_cast<quint64>(event.energy)) : 0);
    EXPECT_EQ(read.flags, isBinary ? event.flag1 * 2 + event.flag0 : 0);
  }
  ListRecord none;
  EXPECT_FALSE(reader->Next(none));
  EXPECT_FALSE(reader->Fault());
}

TEST_P(RoundTrip, GivesWavesBack) {
  constexpr qint32 Samples = 7;
  korvax::TraceStore store({.samples = Samples, .channels = 5, .analog = 1, .digital = 3});
  korvax::WaveRecorder recorder("block", control, store, clock);
  std::vector<KorvaxPayload_Waves> written;
  for (int i = 0; i < Records; ++i) {
    KorvaxPayload_Waves& waves = written.emplace_back();
    waves.timestamp = Number();
    waves.samplesPerWave = Samples;
    for (int channel = 0; channel < i % 6; ++channel) {
      auto wave = std::make_unique<KorvaxPayload_Wave>();
      for (int sample = 0; sample < Samples; ++sample) {
        wave->analog.push_back(i % 2 == 0 ? Real() : -Real());
        wave->digital.push_back(static_cast<quint32>(Number() % 8));
      }
      waves.waves.push_back(std::move(wave));
    }
    const auto copy = waves.Clone();  // the store takes the samples of what it is given
    auto& shown = static_cast<KorvaxPayload_Waves&>(*copy);
    shown.samplesPerWave = Samples;
    store.Store(shown);
    recorder.Take(&waves, 0);
  }
  recorder.Finish();

  const auto reader = OpenWaves(Path(), GetParam());
  WaveRecord read;
  for (const KorvaxPayload_Waves& waves : written) {
    ASSERT_TRUE(reader->Next(read)) << reader->Fault()->Text();
    EXPECT_EQ(read.timestamp, waves.timestamp);
    ASSERT_EQ(read.channels, waves.waves.size());
    EXPECT_EQ(read.samples, 7U);
    EXPECT_EQ(read.analogTraces, 1U);
    EXPECT_EQ(read.digitalTraces, 3U);
    for (std::size_t c = 0; c < read.channels; ++c) {
      const auto& wave = dynamic_cast<const KorvaxPayload_Wave&>(*waves.waves[c]);
      for (std::size_t s = 0; s < std::size_t{Samples}; ++s) {
        const double value = wave.analog[s];
        const double expected = GetParam() == Form::Binary       ? value
                                : GetParam() == Form::Csv        ? AsText(value)
                                : std::abs(value) < 2147483648.0 ? std::trunc(value)
                                                                 : -2147483648.0;
        EXPECT_EQ(read.Analog(c)[s], expected);
        EXPECT_EQ(read.Digital(c)[s], wave.digital[s]);
      }
    }
  }
  EXPECT_FALSE(reader->Next(read));
  EXPECT_FALSE(reader->Fault());
}

TEST_P(RoundTrip, GivesRatesBack) {
  korvax::RateRecorder recorder("block", control, clock);
  std::vector<korvax::RateHistory::Record> written;
  for (int i = 0; i < Records; ++i) {
    auto rates = std::make_shared<KorvaxPayload_RateCounters>(static_cast<quint32>(i % 40) + 1);
    for (std::size_t c = 0; c < rates->channelCount; ++c) {
      rates->ratesIn[c] = Real();
      rates->ratesOut[c] = Real();
      rates->countersIn[c] = Number();
      rates->countersOut[c] = Number();
    }
    written.push_back(rates);
  }
  for (const auto& record : written) {
    recorder.Take(std::span(&record, 1));
    clock.steadyMs += 100;
  }
  recorder.Finish();

  const auto reader = OpenRates(Path(), GetParam());
  const bool isCsv = GetParam() == Form::Csv;
  const auto shown = [](double rate) {
    return GetParam() == Form::Binary ? static_cast<double>(static_cast<float>(rate)) : AsText(rate);
  };
  RateRecord read;
  std::int64_t time = 0;
  for (const auto& rates : written) {
    ASSERT_TRUE(reader->Next(read)) << reader->Fault()->Text();
    EXPECT_EQ(read.milliseconds, time);
    const std::size_t channels = rates->channelCount;
    ASSERT_EQ(read.ratesIn.size(), channels);
    ASSERT_EQ(read.ratesOut.size(), isCsv ? channels - 1 : channels);
    ASSERT_EQ(read.countsIn.size(), channels);
    for (std::size_t c = 0; c < channels; ++c) {
      EXPECT_EQ(read.ratesIn[c], shown(rates->ratesIn[c]));
      EXPECT_EQ(read.countsIn[c], rates->countersIn[c]);
      if (c < read.ratesOut.size()) {
        EXPECT_EQ(read.ratesOut[c], shown(rates->ratesOut[c]));
        EXPECT_EQ(read.countsOut[c], rates->countersOut[c]);
      }
    }
    time += 100;
  }
  EXPECT_FALSE(reader->Next(read));
  EXPECT_FALSE(reader->Fault());
}

std::string NameOf(const testing::TestParamInfo<Form>& form) {
  return std::array{"BIN", "CSV", "JSON"}.at(static_cast<std::size_t>(form.param));
}

INSTANTIATE_TEST_SUITE_P(EveryForm, RoundTrip, testing::Values(Form::Binary, Form::Csv, Form::Json), NameOf);

}  // namespace
}  // namespace korvax::runfiles
