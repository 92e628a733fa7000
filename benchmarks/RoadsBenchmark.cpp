// Whole roads, from a board that has its data ready to the block at the end: CPU time of all threads an event
// beside the bare loop, which takes the same records through the entry array straight into the same histogram on
// one thread. All roads are taken in turns; of each the best round counts.
//
// korvax-bench-roads [--rounds N] [ROAD...]

#include "benchmarks/Answers.h"
#include "benchmarks/Inputs.h"
#include "benchmarks/PreparedBoard.h"
#include "benchmarks/Road.h"
#include "framework/QueryHandler.h"
#include "recording/DataDumper.h"
#include "server/ProcessSettings.h"
#include "sinks/BinIndex.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

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
  bench::AnswerTimes answers = {};
};

Result ResultOf(const bench::Passage& passage) {
  const auto events = static_cast<double>(passage.made);
  return {passage.cost.cpuSeconds / events * 1e9, events / passage.cost.wallSeconds, passage.lost, {}};
}

Result BareLoop(qint64 blocks) {
  using bench::Bins;
  using bench::Channels;
  std::vector<quint32> counts(static_cast<std::size_t>(Channels) * Bins);
  const bench::Blocks input = bench::EventBlocks();
  const bench::Cost cost = bench::Measure([&] {
    for (qint64 i = 0; i < blocks; ++i) {
      for (const board::Entry& entry : input[static_cast<std::size_t>(i) % input.size()]) {
        const auto* record = static_cast<const board::EnergyRecord*>(entry.record);
        const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(record->energyRaw * 1.0), Bins);
        const qint32 channel = korvax::ClampIndex(static_cast<qint32>(record->channel), Channels);
        ++counts[static_cast<std::size_t>(channel * Bins + bin)];
      }
      asm volatile("" : : "r"(counts.data()) : "memory");
    }
  });
  const double events = static_cast<double>(blocks) * bench::EventsPerBlock;
  return {cost.cpuSeconds / events * 1e9, events / cost.wallSeconds, 0, {}};
}

// At so many entries a second, or as fast as they are fetched when it is 0.
void Load(bench::Blocks input, qint64 blocks, int entriesPerBlock, double perSecond) {
  bench::PreparedBoard::SetPace(perSecond > 0.0 ? static_cast<qint64>(entriesPerBlock / perSecond * 1e9) : 0);
  bench::PreparedBoard::Load(input, blocks);
}

void Load(qint64 blocks, double eventsPerSecond) {
  Load(bench::EventBlocks(), blocks, bench::EventsPerBlock, eventsPerSecond);
}

Result ToSpectrum(const QString& sourceParameters, qint64 blocks, double eventsPerSecond) {
  bench::Road road(QStringLiteral("energy"), sourceParameters,
                   Spectrum(QStringLiteral("a"), QStringLiteral("source")));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  Load(blocks, eventsPerSecond);
  return ResultOf(road.Run());
}

Result Calibrated(qint64 blocks, double eventsPerSecond) {
  return ToSpectrum(
      QStringLiteral(R"({"param_name": "energy_calibration_expression", "param_value": "0.001*x^2+0.3*x+1.5"})"),
      blocks, eventsPerSecond);
}

Result ToTwoSpectra(qint64 blocks, double eventsPerSecond) {
  const QString tee = QStringLiteral("tee");
  bench::Road road(QStringLiteral("energy"), QString(),
                   Tee() + QLatin1Char(',') + Spectrum(QStringLiteral("a"), tee) + QLatin1Char(',') +
                       Spectrum(QStringLiteral("b"), tee, 1));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  road.Ask(QStringLiteral("b"), QString::fromLatin1(FreeRun));
  Load(blocks, eventsPerSecond);
  return ResultOf(road.Run());
}

Result ToFiles(const QString& type, qint64 blocks, double eventsPerSecond) {
  const QTemporaryDir folder;
  bench::Road road(QStringLiteral("energy"), QString(), Dumper());
  auto& dumper = dynamic_cast<DataDumper&>(road.Block(QStringLiteral("dumper")));
  dumper.ConfigureDump(5'000'000, type, folder.path());
  QDir(folder.path()).mkdir(QStringLiteral("run"));
  dumper.StartDump(QStringLiteral("run"));
  Load(blocks, eventsPerSecond);
  return ResultOf(road.Run());
}

// The rate is of records, of two events each.
Result PairsToSpectrum(qint64 blocks, double recordsPerSecond) {
  bench::Road road(QStringLiteral("energy_pair"), QString(),
                   Spectrum(QStringLiteral("a"), QStringLiteral("source")));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  Load(bench::PairBlocks(), blocks, bench::PairsPerBlock, recordsPerSecond);
  return ResultOf(road.Run());
}

constexpr const char* SorterAndPosition = R"({"block_type": "time_sorting", "name": "sorter", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}]},
  {"block_type": "position", "name": "a", "input_count": 1, "sources": [{"source": "sorter", "pin": "0"}],
   "parameters": [{"param_name": "positions", "param_value": [0,0,1,1,2,2,3,3,4,4,5,5,6,6,7,7]},
    {"param_name": "correlated_channels", "param_value": [1,0,3,2,5,4,7,6,9,8,11,10,13,12,15,14]},
    {"param_name": "y_positions", "param_value": 64}]})";

// At a given pace: faster than the order buffer's limits, 10000 events in 5 ms, it drops by design.
Result SortedToPosition(qint64 blocks, double eventsPerSecond) {
  constexpr int PerBlock = 1000;
  const bench::Coincidences coincidences(static_cast<std::size_t>(blocks), PerBlock);
  bench::Road road(QStringLiteral("energy"), QString(), QString::fromLatin1(SorterAndPosition));
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  Load(coincidences.Blocks(), blocks, PerBlock, eventsPerSecond);
  return ResultOf(road.Run());
}

// An "event" of these two is a sample.
Result CopySamples(qint64 blocks) {
  std::vector<qint32> analog(bench::Waves * bench::Samples);
  std::vector<quint32> digital(analog.size());
  const auto& reads = bench::WaveReads();
  const bench::Cost cost = bench::Measure([&] {
    for (qint64 i = 0; i < blocks; ++i) {
      const auto& read = reads[static_cast<std::size_t>(i) % reads.size()];
      std::memcpy(analog.data(), read.analog.data(), analog.size() * sizeof(qint32));
      std::memcpy(digital.data(), read.digital.data(), digital.size() * sizeof(quint32));
      asm volatile("" : : "r"(analog.data()), "r"(digital.data()) : "memory");
    }
  });
  const double samples = static_cast<double>(blocks) * bench::Waves * bench::Samples;
  return {cost.cpuSeconds / samples * 1e9, samples / cost.wallSeconds, 0, {}};
}

Result ToOscilloscope(qint64 blocks) {
  bench::Road road(QStringLiteral("waveform"), QString(),
                   QStringLiteral(R"({"block_type": "oscilloscope", "name": "scope", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}], "parameters": [
    {"param_name": "sample_number", "param_value": 4096}, {"param_name": "ch_number", "param_value": 16},
    {"param_name": "ch_analog", "param_value": 1}, {"param_name": "ch_digital", "param_value": 1}]})"));
  Load(bench::WaveBlocks(), blocks, 1, 0);
  const bench::Passage passage = road.Run();
  const double samples = static_cast<double>(passage.made) * bench::Waves * bench::Samples;
  return {passage.cost.cpuSeconds / samples * 1e9, samples / passage.cost.wallSeconds, passage.lost, {}};
}

constexpr int ManyBins = 16384;

QString LargeSpectrum() {
  return QStringLiteral(R"({"block_type": "spectrum", "name": "a", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}], "parameters": [{"param_name": "gain", "param_value": 4},
    {"param_name": "bin_number", "param_value": %1}, {"param_name": "ch_number", "param_value": %2}]})")
      .arg(ManyBins)
      .arg(bench::Channels);
}

constexpr const char* Path = "processing/0/filter_chain/c/chain/a";

QString AskForChannels(int channels) {
  QStringList numbers;
  for (int channel = 0; channel < channels; ++channel) {
    numbers << QString::number(channel);
  }
  return QStringLiteral(R"({"path": "%1", "args": [{"cmd": "get_data", "channels": [%2]}]})")
      .arg(QLatin1String(Path), numbers.join(QLatin1Char(',')));
}

struct Asking {
  int clients = 0;
  int channels = 0;
  int intervalMs = 0;
};

// A spectrum of 64 x 16384 bins, asked meanwhile or left alone.
Result ToAskedSpectrum(qint64 blocks, double eventsPerSecond, const Asking& asking) {
  bench::Road road(QStringLiteral("energy"), QString(), LargeSpectrum());
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  std::optional<bench::OutsideClients> clients;
  if (asking.clients > 0) {
    clients.emplace(road.Blocks(), QStringLiteral("query_by_json"), AskForChannels(asking.channels),
                    asking.clients, asking.intervalMs);
  }
  Load(blocks, eventsPerSecond);
  Result result = ResultOf(road.Run());
  if (clients) {
    result.answers = clients->Finish();
  }
  return result;
}

// Answers with a text that is ready.
class ReadyText : public KorvaxBlock, public QueryHandler {
public:
  explicit ReadyText(const QString& text)
      : KorvaxBlock(QStringLiteral("ready"), false, ChainContext{}, nullptr), text_(text) {
    SetName(QStringLiteral("ready"));
  }
  void InterpretMessage(QString* /*data_in*/, QString* data_out) override { *data_out = text_; }
  QueryReach Reach() const override { return QueryReach::ByName; }

private:
  const QString text_;
};

// Some seconds of one client that asks for everything as fast as it is answered.
Result AnswerOf(const BlockList& blocks, const QString& route, const QString& query) {
  bench::OutsideClients client(blocks, route, query, 1, 0);
  QEventLoop loop;
  QTimer::singleShot(2'000, &loop, &QEventLoop::quit);
  const bench::Cost cost = bench::Measure([&] { loop.exec(); });
  Result result;
  result.answers = client.Finish();
  result.cpuNs = cost.cpuSeconds / static_cast<double>(result.answers.answers) * 1e9;
  return result;
}

Result AnswerOfSpectrum(qint64 blocks) {
  bench::Road road(QStringLiteral("energy"), QString(), LargeSpectrum());
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  Load(blocks, 0);
  road.Run();
  return AnswerOf(road.Blocks(), QStringLiteral("query_by_json"), AskForChannels(bench::Channels));
}

Result AnswerOfReadyText(qint64 blocks) {
  bench::Road road(QStringLiteral("energy"), QString(), LargeSpectrum());
  road.Ask(QStringLiteral("a"), QString::fromLatin1(FreeRun));
  Load(blocks, 0);
  road.Run();
  BlockList ready;
  ready.push_back(std::make_unique<ReadyText>(road.Ask(QStringLiteral("a"), AskForChannels(bench::Channels))));
  return AnswerOf(ready, QStringLiteral("ready"), QStringLiteral("{}"));
}

// Rates are those at which the board hands out, in millions of events a second; 0 for as fast as they are fetched.
struct RoadEntry {
  const char* name;
  std::function<Result(qint64 blocks, double eventsPerSecond)> run;
  qint64 blocks;
  double millionsPerSecond;
  const char* base;  // what its cost is compared with
};

// A road that needs no pace.
template <typename Run>
auto Unpaced(Run run) {
  return [run](qint64 blocks, double /*eventsPerSecond*/) { return run(blocks); };
}

auto Spectrum() {
  return [](qint64 blocks, double rate) { return ToSpectrum(QString(), blocks, rate); };
}

auto Files(const char* type) {
  return [type](qint64 blocks, double rate) { return ToFiles(QString::fromLatin1(type), blocks, rate); };
}

auto Asked(const Asking& asking) {
  return [asking](qint64 blocks, double rate) { return ToAskedSpectrum(blocks, rate, asking); };
}

const std::vector<RoadEntry>& Roads() {
  using bench::Channels;
  static const std::vector<RoadEntry> roads{
      {"bare loop", Unpaced(BareLoop), 50'000, 0, "bare loop"},
      {"spectrum", Spectrum(), 100'000, 50, "bare loop"},
      {"spectrum, most", Spectrum(), 100'000, 0, "bare loop"},
      {"calibrated", Calibrated, 100'000, 50, "spectrum"},
      {"tee", ToTwoSpectra, 50'000, 25, "bare loop"},
      {"tee, most", ToTwoSpectra, 50'000, 0, "bare loop"},
      {"bin", Files("BIN"), 40'000, 40, "bare loop"},
      {"bin, most", Files("BIN"), 40'000, 0, "bare loop"},
      {"csv", Files("CSV"), 10'000, 0, "bare loop"},
      {"json", Files("JSON"), 10'000, 0, "bare loop"},
      {"pairs", PairsToSpectrum, 500, 0.5, "bare loop"},
      {"pairs, most", PairsToSpectrum, 500, 0, "bare loop"},
      {"sorted, 0.5", SortedToPosition, 500, 0.5, "bare loop"},
      {"sorted, 1", SortedToPosition, 1'000, 1, "bare loop"},
      {"sorted, 1.5", SortedToPosition, 1'500, 1.5, "bare loop"},
      {"sorted, 10", SortedToPosition, 10'000, 10, "bare loop"},
      {"memcpy", Unpaced(CopySamples), 5'000, 0, "memcpy"},
      {"scope", Unpaced(ToOscilloscope), 5'000, 0, "memcpy"},
      {"ready text", Unpaced(AnswerOfReadyText), 20'000, 0, "ready text"},
      {"get_data", Unpaced(AnswerOfSpectrum), 20'000, 0, "ready text"},
      {"unasked", Asked({}), 150'000, 50, "unasked"},
      {"asked 10/s", Asked({1, Channels, 100}), 150'000, 50, "unasked"},
      {"500 clients", Asked({500, 1, 1'000}), 150'000, 50, "unasked"},
  };
  return roads;
}

bool IsWanted(const std::vector<std::string>& names, const RoadEntry& road) {
  if (names.empty()) {
    return true;
  }
  const auto isNamed = [&](const char* name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  const auto isBaseOfNamed = [&](const RoadEntry& other) {
    return isNamed(other.name) && std::strcmp(other.base, road.name) == 0;
  };
  return isNamed(road.name) || std::any_of(Roads().begin(), Roads().end(), isBaseOfNamed);
}

// Of several rounds: the least cost, the highest rate, the fewest losses, the fastest answers.
void KeepBest(Result& best, const Result& result) {
  if (best.cpuNs == 0.0) {
    best = result;
    return;
  }
  if (result.lost == best.lost) {
    best.cpuNs = std::min(best.cpuNs, result.cpuNs);
    best.rate = std::max(best.rate, result.rate);
  } else if (result.lost < best.lost) {  // what is lost early costs less
    best.cpuNs = result.cpuNs;
    best.rate = result.rate;
    best.lost = result.lost;
  }
  best.answers.medianMs = std::min(best.answers.medianMs, result.answers.medianMs);
  best.answers.percentile99Ms = std::min(best.answers.percentile99Ms, result.answers.percentile99Ms);
}

void Print(const RoadEntry& road, const std::map<std::string, Result>& best) {
  const Result& result = best.at(road.name);
  std::printf("%-15s %12.2f %8.2f x %-11s", road.name, result.cpuNs, result.cpuNs / best.at(road.base).cpuNs,
              road.base);
  if (result.rate > 0.0) {
    std::printf("%12.2f %10llu", result.rate * 1e-6, static_cast<unsigned long long>(result.lost));
  } else {
    std::printf("%12s %10s", "", "");
  }
  if (result.answers.answers > 0) {
    std::printf("%10.2f %10.2f", result.answers.medianMs, result.answers.percentile99Ms);
  }
  std::printf("\n");
}

}  // namespace

int main(int argc, char* argv[]) {
  korvax::ApplyProcessSettings();
  if (argc > 1 && std::strcmp(argv[1], "--clients") == 0) {
    return bench::RunClients(argc, argv);
  }
  const QCoreApplication application(argc, argv);
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  const std::vector<std::string> names(argv + 1, argv + argc);
  std::map<std::string, Result> best;
  for (int round = 0; round < 5; ++round) {
    for (const RoadEntry& road : Roads()) {
      if (IsWanted(names, road)) {
        KeepBest(best[road.name], road.run(road.blocks, road.millionsPerSecond * 1e6));
      }
    }
  }
  std::printf("%-15s %12s %10s %-11s%12s %10s%10s %10s\n", "road", "CPU ns", "", "", "million/s", "lost",
              "median ms", "99 % ms");
  for (const RoadEntry& road : Roads()) {
    if (best.count(road.name) != 0) {
      Print(road, best);
    }
  }
  return 0;
}
