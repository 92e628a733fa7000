// What each station of an event's road costs, beside the bare loop that takes the same raw records straight into
// an array. One iteration is one block of 1000 events.

#include "acquisition/Decoder.h"
#include "acquisition/EnergyCalibration.h"
#include "benchmarks/RatioReporter.h"
#include "benchmarks/RawBlock.h"
#include "framework/ByteWriter.h"
#include "framework/KorvaxPayload_Energy.h"
#include "framework/PinInput.h"
#include "recording/ListRecorder.h"
#include "sinks/BinIndex.h"
#include "sinks/CountGrid.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int EventsPerBlock = 1000;
constexpr int Channels = 64;
constexpr int Bins = 4096;

const bench::RawBlock& Block() {
  static const bench::RawBlock block(EventsPerBlock, Channels, Bins);
  return block;
}

std::unique_ptr<PayloadBatch> DecodeBlock(const QString& expression = {}) {
  static EnergyCalibration calibration;
  calibration.Use(expression);
  const acquisition::DecodeSettings settings{QStringLiteral("energy"), &calibration, false, nullptr};
  std::unique_ptr<PayloadBatch> decoded;
  acquisition::Decode(Block().Entries(), settings,
                      [&](std::unique_ptr<PayloadBatch> batch) { decoded = std::move(batch); });
  return decoded;
}

void CountEvents(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * EventsPerBlock);
}

void BareLoop(benchmark::State& state) {
  std::vector<quint32> counts(Channels * Bins);
  for (auto _ : state) {
    for (const board::Entry& entry : Block().Entries()) {
      const auto* record = static_cast<const board::EnergyRecord*>(entry.record);
      const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(record->energyRaw * 1.0), Bins);
      const qint32 channel = korvax::ClampIndex(static_cast<qint32>(record->channel), Channels);
      ++counts[static_cast<std::size_t>(channel * Bins + bin)];
    }
    benchmark::DoNotOptimize(counts.data());
    benchmark::ClobberMemory();
  }
  CountEvents(state);
}
BENCHMARK(BareLoop);

// Decoding includes the records' destruction: each has to be paid for somewhere.
void Decode(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(DecodeBlock());
  }
  CountEvents(state);
}
BENCHMARK(Decode);

void DecodeCalibrated(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(DecodeBlock(QStringLiteral("0.3*x+1.5")));
  }
  CountEvents(state);
}
BENCHMARK(DecodeCalibrated);

void PushAndPop(benchmark::State& state) {
  PinOutput output(QStringLiteral("energy"));
  PinInput input(QStringLiteral("energy"));
  input.Connect(&output);
  auto batch = DecodeBlock();
  for (auto _ : state) {
    DataMessage message;
    message.batch = std::move(batch);
    output.Push(std::move(message));
    DataMessage taken;
    input.Pop(taken);
    batch = std::move(taken.batch);
  }
  CountEvents(state);
}
BENCHMARK(PushAndPop);

void Clone(benchmark::State& state) {
  const auto batch = DecodeBlock();
  for (auto _ : state) {
    const EnergyEvents copies = batch->events;
    benchmark::DoNotOptimize(copies.data());
  }
  CountEvents(state);
}
BENCHMARK(Clone);

void CountSpectrum(benchmark::State& state) {
  const auto batch = DecodeBlock();
  korvax::CountGrid counts(Channels, Bins);
  for (auto _ : state) {
    for (const KorvaxPayload_Energy& event : batch->events) {
      counts.Count(korvax::ClampIndex(static_cast<qint32>(event.channel), Channels),
                   korvax::ClampIndex(korvax::TruncateToBin(event.energyRaw * 1.0), Bins));
    }
  }
  CountEvents(state);
}
BENCHMARK(CountSpectrum);

// Into the buffer that a recorder writes to the file once for each container.
void WriteRecords(benchmark::State& state, quint32 format) {
  const auto batch = DecodeBlock();
  korvax::ByteWriter buffer;
  for (auto _ : state) {
    buffer.Clear();
    for (const KorvaxPayload_Energy& event : batch->events) {
      event.Write(format, buffer);
    }
    benchmark::DoNotOptimize(buffer.View().data());
  }
  CountEvents(state);
}
BENCHMARK_CAPTURE(WriteRecords, Binary, korvax::FormatBinary);
BENCHMARK_CAPTURE(WriteRecords, Csv, korvax::FormatCsv);
BENCHMARK_CAPTURE(WriteRecords, Json, korvax::FormatJson);

// The same, the file in a temporary folder included.
void RecordContainers(benchmark::State& state) {
  const QTemporaryDir folder;
  const PinInput pin(QStringLiteral("energy"));
  korvax::DumpControl control(pin, {.eventsPerFile = 10'000'000,
                                    .fileType = QStringLiteral("BIN"),
                                    .filePath = folder.path(),
                                    .runId = QStringLiteral(".")});
  korvax::RunStatistics statistics;
  korvax::ListRecorder recorder(QStringLiteral("dumper"), control, statistics);
  const auto batch = DecodeBlock();
  control.StartRun(QStringLiteral("."));
  for (auto _ : state) {
    recorder.Take(*batch);
  }
  CountEvents(state);
}
BENCHMARK(RecordContainers);

}  // namespace

int main(int argc, char* argv[]) {
  benchmark::Initialize(&argc, argv);
  bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
