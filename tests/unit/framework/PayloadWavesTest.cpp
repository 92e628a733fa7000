#include "framework/ByteWriter.h"
#include "framework/KorvaxPayload_Waves.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<KorvaxPayload_Wave> Wave(double firstSample) {
  auto wave = std::make_unique<KorvaxPayload_Wave>();
  wave->word1 = 11;
  wave->word2 = 12;
  wave->word3 = 13;
  wave->analog = {firstSample, -2.5, 3.0};
  wave->digital = {1, 0xFFFFFFFF, 0};
  return wave;
}

const KorvaxPayload_Wave& AsWave(const KorvaxPayload* record) {
  const auto* wave = korvax::PayloadCast<KorvaxPayload_Wave>(record);
  if (wave == nullptr) {
    throw std::logic_error("not a wave");
  }
  return *wave;
}

void ExpectNoListFileForm(const KorvaxPayload& record) {
  for (const quint32 format : {0U, 1U, 2U, 3U, 0xFFFFFFFFU}) {
    korvax::ByteWriter out;
    EXPECT_FALSE(record.Write(format, out)) << format;
    EXPECT_EQ(out.Size(), 0U) << format;
  }
}

TEST(WaveRecord, isNoEventInStatistics) {
  EXPECT_EQ(KorvaxPayload_Wave().count, 0);
}

TEST(WaveRecord, cloneCarriesOverTheSamplesOnly_isKept) {
  const auto wave = Wave(1.5);
  const auto clone = wave->Clone();
  const KorvaxPayload_Wave& copy = AsWave(clone.get());
  EXPECT_EQ(copy.analog, (WaveSamples<double>{1.5, -2.5, 3.0}));
  EXPECT_EQ(copy.digital, (WaveSamples<quint32>{1, 0xFFFFFFFF, 0}));
  EXPECT_EQ(copy.TypeText(), QLatin1String(""));
  EXPECT_EQ(copy.count, 0);
}

TEST(WaveRecord, writingToACloneLeavesTheOriginalsSamples) {
  const auto wave = Wave(1.5);
  const auto clone = wave->Clone();
  static_cast<KorvaxPayload_Wave&>(*clone).analog[0] = 99.0;
  static_cast<KorvaxPayload_Wave&>(*clone).digital[0] = 99;
  EXPECT_EQ(wave->analog[0], 1.5);
  EXPECT_EQ(wave->digital[0], 1U);
}

TEST(WaveRecord, cloneOutlivesItsOriginal) {
  auto wave = Wave(1.5);
  const auto clone = wave->Clone();
  wave.reset();
  EXPECT_EQ(AsWave(clone.get()).analog.at(0), 1.5);
}

TEST(WaveRecord, hasNoFormInListFiles) {
  ExpectNoListFileForm(*Wave(1.0));
}

TEST(WavesRecord, isOfTypeWaveformAndNoEventInStatistics) {
  const KorvaxPayload_Waves waves;
  EXPECT_EQ(waves.TypeText(), QLatin1String("waveform"));
  EXPECT_EQ(waves.count, 0);
}

TEST(WavesRecord, cloneKeepsTheWavesInOrderButLosesItsHeader_isKept) {
  KorvaxPayload_Waves waves;
  waves.timestamp = 5;
  waves.headerWord1 = 6;
  waves.samplesPerWave = 3;
  waves.headerWord2 = 7;
  waves.headerWord3 = 8;
  waves.waves.push_back(Wave(1.0));
  waves.waves.push_back(Wave(2.0));
  const auto clone = waves.Clone();
  const auto* copy = korvax::PayloadCast<KorvaxPayload_Waves>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->TypeText(), QLatin1String("waveform"));
  EXPECT_EQ(copy->count, 0);
  EXPECT_EQ(copy->timestamp, 0U);
  EXPECT_EQ(copy->headerWord1, 0U);
  EXPECT_EQ(copy->samplesPerWave, 0);
  EXPECT_EQ(copy->headerWord2, 0U);
  EXPECT_EQ(copy->headerWord3, 0U);
  ASSERT_EQ(copy->waves.size(), 2U);
  EXPECT_EQ(AsWave(copy->waves[0].get()).analog.at(0), 1.0);
  EXPECT_EQ(AsWave(copy->waves[1].get()).analog.at(0), 2.0);
}

TEST(WavesRecord, clonedWavesHaveAnEmptyTypeTextAndNoCount_isKept) {
  KorvaxPayload_Waves waves;
  waves.waves.push_back(Wave(1.0));
  waves.waves.front()->count = 5;
  const auto clone = waves.Clone();
  const auto& copy = static_cast<const KorvaxPayload_Waves&>(*clone);
  EXPECT_EQ(copy.waves.at(0)->TypeText(), QLatin1String(""));
  EXPECT_EQ(copy.waves.at(0)->count, 0);
}

TEST(WavesRecord, cloneSetsTypeTextAndCountAnewWhateverTheOriginalHeld) {
  KorvaxPayload_Waves waves;
  waves.count = 9;
  const auto clone = waves.Clone();
  EXPECT_EQ(clone->TypeText(), QLatin1String("waveform"));
  EXPECT_EQ(clone->count, 0);
}

TEST(WavesRecord, destroysEveryWaveItHolds) {
  int destroyed = 0;
  std::unique_ptr<KorvaxPayload> record;
  {
    auto waves = std::make_unique<KorvaxPayload_Waves>();
    for (int i = 0; i < 5; ++i) {
      waves->waves.push_back(test::Watched([&destroyed] { ++destroyed; }));
    }
    record = std::move(waves);
  }
  EXPECT_EQ(destroyed, 0);
  record.reset();
  EXPECT_EQ(destroyed, 5);
}

TEST(WavesRecord, hasNoFormInListFiles) {
  KorvaxPayload_Waves waves;
  waves.waves.push_back(Wave(1.0));
  ExpectNoListFileForm(waves);
}

TEST(PayloadBatch, destroysEachRecordOnce) {
  int destroyed = 0;
  auto batch = std::make_unique<PayloadBatch>();
  batch->records.push_back(test::Watched([&destroyed] { ++destroyed; }));
  batch->records.push_back(test::Watched([&destroyed] { ++destroyed; }));
  batch.reset();
  EXPECT_EQ(destroyed, 2);
}

}  // namespace
