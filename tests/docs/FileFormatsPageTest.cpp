#include "framework/KorvaxPayload_RateCounters.h"
#include "framework/KorvaxPayload_Waves.h"
#include "recording/ListRecorder.h"
#include "recording/RateRecorder.h"
#include "sinks/WaveRecorder.h"
#include "tests/docs/MarkdownPage.h"
#include "tests/support/FakeClock.h"
#include "tests/support/Records.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using korvax::DumpControl;

QByteArray Content(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return file.readAll();
}

// Sixteen bytes a line, as hexdump programs show them.
QByteArray HexDump(const QByteArray& bytes) {
  constexpr int Width = 16;
  QByteArray dump;
  for (int at = 0; at < bytes.size(); at += Width) {
    const QByteArray line = bytes.mid(at, Width);
    QByteArray text = line;
    for (char& byte : text) {
      byte = byte < ' ' || byte > '~' ? '.' : byte;
    }
    dump += QByteArray::number(at, 16).rightJustified(4, '0') + "  " +
            line.toHex(' ').leftJustified(Width * 3, ' ') + ' ' + text + '\n';
  }
  return dump;
}

// The program's recorders write one small run; the page shows its files.
class FileFormatsPage : public testing::Test {
protected:
  FileFormatsPage() {
    clock.secondsSinceEpoch = 1'767'225'600;  // 2026-01-01
    control.Set([this](korvax::DumpSettings& settings) {
      settings.filePath = folder.path();
      settings.eventsPerFile = 100;
      settings.dumpTime = 200;
    });
    EXPECT_TRUE(QDir(folder.path()).mkdir("12"));
  }

  void StartRun(const char* fileType) {
    control.Set([&](korvax::DumpSettings& settings) { settings.fileType = QLatin1String(fileType); });
    control.StartRun("12");
  }

  void RecordEvents(const char* fileType) {
    korvax::RunStatistics statistics;
    korvax::ListRecorder recorder("dumper", control, statistics, clock);
    auto first = std::make_unique<KorvaxPayload_Energy>();
    first->timestamp = 1000;
    first->channel = 1;
    first->energyRaw = 2648;
    first->energy = 662.1;
    auto second = std::make_unique<KorvaxPayload_Energy>();
    second->timestamp = 70'000;
    second->channel = 3;
    second->energyRaw = 65535;
    second->energy = 16383.75;
    second->flag0 = 1;
    second->flag1 = 1;
    StartRun(fileType);
    recorder.Take(*test::MessageOf(std::move(first)).batch);
    clock.steadyMs += 1001;
    recorder.Take(*test::MessageOf(std::move(second)).batch);
    recorder.Finish();
  }

  void RecordWaves(const char* fileType) {
    korvax::TraceStore store({.samples = 3, .channels = 2, .analog = 1, .digital = 2});
    korvax::WaveRecorder recorder("scope", control, store, clock);
    KorvaxPayload_Waves waves;
    waves.timestamp = 5000;
    waves.samplesPerWave = 3;
    for (const double baseline : {100.0, 200.5}) {
      auto wave = std::make_unique<KorvaxPayload_Wave>();
      wave->analog = {baseline, baseline + 1, -2.75};
      wave->digital = {0, 1, 3};
      waves.waves.push_back(std::move(wave));
    }
    store.Store(waves);
    StartRun(fileType);
    recorder.Take(&waves, 0);
    clock.steadyMs += 201;
    recorder.Take(&waves, 0);
    recorder.Finish();
  }

  void RecordRates(const char* fileType) {
    korvax::RateRecorder recorder("rates", control, clock);
    auto rates = std::make_shared<KorvaxPayload_RateCounters>(2);
    rates->ratesIn = {2454.68, 1000.0};
    rates->ratesOut = {2453.6, 1000.0};
    rates->countersIn = {11375, 4634};
    rates->countersOut = {11370, 4634};
    const korvax::RateHistory::Record records[] = {rates};
    StartRun(fileType);
    recorder.Take(records);
    clock.steadyMs += 100;
    recorder.Take(records);
    recorder.Finish();
  }

  void ExpectHexDump(const char* file) {
    const QByteArray dump = HexDump(Content(folder.filePath(QStringLiteral("12/") + file)));
    ExpectShown(QStringLiteral("hexdump %1").arg(file), dump);
  }
  void ExpectText(const char* file) {
    ExpectShown(QStringLiteral("text %1").arg(file), Content(folder.filePath(QStringLiteral("12/") + file)));
  }

private:
  void ExpectShown(const QString& kind, QByteArray content) {
    if (content.endsWith('\n')) {
      content.chop(1);
    }
    const auto blocks = page.BlocksOf(kind);
    ASSERT_EQ(blocks.size(), 1U) << qPrintable(kind) << "\n" << content.toStdString();
    EXPECT_EQ(blocks.front().toStdString(), content.toStdString()) << qPrintable(kind);
  }

protected:
  const test::MarkdownPage page{QStringLiteral("docs/file-formats.md")};
  QTemporaryDir folder;
  test::FakeClock clock;
  PinInput pin{"any"};
  DumpControl control{pin, {}};
};

TEST_F(FileFormatsPage, ShowsListFilesAsTheyAreWritten) {
  RecordEvents("BIN");
  ExpectHexDump("dumper_0.bin");
  ExpectText("dumper_0.stat");
  RecordEvents("CSV");
  ExpectText("dumper_0.csv");
  RecordEvents("JSON");
  ExpectText("dumper_0.json");
}

TEST_F(FileFormatsPage, ShowsWaveFilesAsTheyAreWritten) {
  RecordWaves("BIN");
  ExpectHexDump("scope_0.bin");
  RecordWaves("CSV");
  ExpectText("scope_0.csv");
  RecordWaves("JSON");
  ExpectText("scope_0.json");
}

TEST_F(FileFormatsPage, ShowsRateFilesAsTheyAreWritten) {
  RecordRates("BIN");
  ExpectHexDump("rates_0.bin");
  RecordRates("CSV");
  ExpectText("rates_0.csv");
  RecordRates("JSON");
  ExpectText("rates_0.json");
}

}  // namespace
