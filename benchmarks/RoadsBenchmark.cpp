// Whole roads, from a board that has its data ready to the block at the end: CPU time of all threads an event
// beside the bare loop, which takes the same records through the entry array straight into the same histogram on
// one thread. All roads are taken in turns; of each the best round counts.
//
// korvax-bench-roads [--rounds N] [ROAD...]

#include "acquisition/EnergyDecoder.h"
#include "benchmarks/PreparedBoard.h"
#include "benchmarks/RawBlock.h"
#include "benchmarks/Road.h"
#include "recording/DataDumper.h"
#include "sinks/BinIndex.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr int Channels = 64;
constexpr int Bins = 4096;
constexpr int EventsPerBlock = 1000;

constexpr const char* FreeRun = R"({"args": [{"cmd": "run_control", "status": "freerun"}]})";

QString Spectrum(const QString& name, const QString& from, int pin = 0) {
  return QStringLiteral(R"({"block_type": "spectrum", "name": "%1", "input_count": 1,
    "sources": [{"source": "%2", "pin": "%3"}], "parameters": [
    {"param_name": "bin_number", "param_value": 4096}, {"param_name": "ch_number", "param_value": 64}]})")
      .arg(name, from)
      .arg(pin);
}

QString Tee() {
  return QStringLiteral(R"({"block_type": "tee", "name": "tee", "input_count": 1, "output_count": 2,
    "sources": [{"source": "source", "pin": "0"}]})");
}

QString Dumper() {
  return QStringLiteral(R"({"block_type": "dumper", "name": "dumper", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}]})");
}

struct Result {
  double cpuNs = 0.0;  // an event
  double rate = 0.0;   // events a second
  quint64 lost = 0;
};

Result ResultOf(const bench::Passage& passage) {
  const auto events = static_cast<double>(passage.made);
  return {passage.cost.cpuSeconds / events * 1e9, events / passage.cost.wallSeconds, passage.lost};
}

// Several, so that records and counters don't all stay in the nearest cache, as those of a board wouldn't.
std::span<const std::span<const board::Entry>> Blocks() {
  static const auto blocks = [] {
    std::vector<bench::RawBlock> made;
    for (quint32 seed = 1; seed <= 64; ++seed) {
      made.emplace_back(EventsPerBlock, Channels, Bins, seed);
    }
    return made;
  }();
  static const auto entries = [] {
    std::vector<std::span<const board::Entry>> spans;
    for (const bench::RawBlock& block : blocks) {
      spans.push_back(block.Entries());
    }
    return spans;
  }();
  return entries;
}

Result BareLoop(qint64 blocks) {
  std::vector<quint32> counts(static_cast<std::size_t>(Channels) * Bins);
  Blocks();  // made before the clock runs
  const bench::Cost cost = bench::Measure([&] {
    for (qint64 i = 0; i < blocks; ++i) {
      for (const board::Entry& entry : Blocks()[static_cast<std::size_t>(i) % Blocks().size()]) {
        const auto* record = static_cast<const board::EnergyRecord*>(entry.record);
        const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(record->energyRaw * 1.0), Bins);
        const qint32 channel = korvax::ClampIndex(static_cast<qint32>(record->channel), Channels);
        ++counts[static_cast<std::size_t>(channel * Bins + bin)];
      }
      asm volatile("" : : "r"(counts.data()) : "memory");
    }
  });
  const double events = static_cast<double>(blocks) * EventsPerBlock;
  return {cost.cpuSeconds / events * 1e9, events / cost.wallSeconds, 0};
}

Result ToSpectrum(const QString& sourceParameters, qint64 blocks) {
  bench::Road road(QStringLiteral("energy"), sourceParameters,
                   Spectrum(QStringLiteral("a"), QStringLiteral("source")));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  bench::PreparedBoard::Load(Blocks(), blocks);
  return ResultOf(road.Run());
}

Result Calibrated(qint64 blocks) {
  return ToSpectrum(
      QStringLiteral(R"({"param_name": "energy_calibration_expression", "param_value": "0.001*x^2+0.3*x+1.5"})"),
      blocks);
}

Result ToTwoSpectra(qint64 blocks) {
  const QString tee = QStringLiteral("tee");
  bench::Road road(QStringLiteral("energy"), QString(),
                   Tee() + QLatin1Char(',') + Spectrum(QStringLiteral("a"), tee) + QLatin1Char(',') +
                       Spectrum(QStringLiteral("b"), tee, 1));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  road.Ask(QStringLiteral("b"), QString::fromLatin1(FreeRun));
  bench::PreparedBoard::Load(Blocks(), blocks);
  return ResultOf(road.Run());
}

Result ToFiles(const QString& type, qint64 blocks) {
  const QTemporaryDir folder;
  bench::Road road(QStringLiteral("energy"), QString(), Dumper());
  auto& dumper = dynamic_cast<DataDumper&>(road.Block(QStringLiteral("dumper")));
  dumper.ConfigureDump(5'000'000, type, folder.path());
  QDir(folder.path()).mkdir(QStringLiteral("run"));
  dumper.StartDump(QStringLiteral("run"));
  bench::PreparedBoard::Load(Blocks(), blocks);
  return ResultOf(road.Run());
}

Result PairsToSpectrum(qint64 blocks) {
  static std::vector<board::EnergyPairRecord> records(1000);
  static std::vector<board::Entry> entries(records.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].timestamp = i;
    records[i].pair = static_cast<quint32>(i % 32);
    records[i].energyRaw[0] = static_cast<quint32>(i * 3 % Bins);
    records[i].energyRaw[1] = static_cast<quint32>(i * 7 % Bins);
    entries[i].record = &records[i];
  }
  bench::Road road(QStringLiteral("energy_pair"), QString(),
                   Spectrum(QStringLiteral("a"), QStringLiteral("source")));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  static std::span<const board::Entry> all;
  all = entries;
  bench::PreparedBoard::Load({&all, 1}, blocks);
  return ResultOf(road.Run());
}

struct RoadEntry {
  const char* name;
  std::function<Result(qint64 blocks)> run;
  qint64 blocks;
};

const std::vector<RoadEntry>& Roads() {
  static const std::vector<RoadEntry> roads{
      {"bare loop", BareLoop, 50'000},
      {"spectrum", [](qint64 blocks) { return ToSpectrum(QString(), blocks); }, 50'000},
      {"calibrated", Calibrated, 50'000},
      {"tee", ToTwoSpectra, 30'000},
      {"bin", [](qint64 blocks) { return ToFiles(QStringLiteral("BIN"), blocks); }, 20'000},
      {"csv", [](qint64 blocks) { return ToFiles(QStringLiteral("CSV"), blocks); }, 5'000},
      {"json", [](qint64 blocks) { return ToFiles(QStringLiteral("JSON"), blocks); }, 5'000},
      {"pairs", PairsToSpectrum, 500},
  };
  return roads;
}

bool IsWanted(int argc, char* argv[], const char* name) {
  bool any = false;
  for (int i = 1; i < argc; ++i) {
    any = true;
    if (std::strcmp(argv[i], name) == 0) {
      return true;
    }
  }
  return !any || std::strcmp(name, "bare loop") == 0;
}

}  // namespace

int main(int argc, char* argv[]) {
  const QCoreApplication application(argc, argv);
  std::map<std::string, Result> best;
  for (int round = 0; round < 5; ++round) {
    for (const RoadEntry& road : Roads()) {
      if (!IsWanted(argc, argv, road.name)) {
        continue;
      }
      const Result result = road.run(road.blocks);
      auto& kept = best[road.name];
      const bool isFirst = kept.cpuNs == 0.0;
      kept.cpuNs = isFirst ? result.cpuNs : std::min(kept.cpuNs, result.cpuNs);
      kept.rate = std::max(kept.rate, result.rate);
      kept.lost = isFirst ? result.lost : std::min(kept.lost, result.lost);
    }
  }
  std::printf("%-14s %10s %10s %14s %12s\n", "road", "CPU ns", "x bare", "million/s", "lost");
  for (const auto& [name, result] : best) {
    std::printf("%-14s %10.2f %10.2f %14.2f %12llu\n", name.c_str(), result.cpuNs,
                result.cpuNs / best["bare loop"].cpuNs, result.rate * 1e-6,
                static_cast<unsigned long long>(result.lost));
  }
  return 0;
}
