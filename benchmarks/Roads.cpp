#include "benchmarks/Roads.h"

#include "benchmarks/Baselines.h"
#include "benchmarks/Inputs.h"
#include "benchmarks/PreparedBoard.h"
#include "recording/DataDumper.h"

#include <QDir>
#include <QTemporaryDir>

namespace bench {

namespace {

QString Spectrum(const QString& name, const QString& from, int pin = 0, int channels = Channels) {
  return QStringLiteral(R"({"block_type": "spectrum", "name": "%1", "input_count": 1,
    "sources": [{"source": "%2", "pin": "%3"}], "parameters": [
    {"param_name": "bin_number", "param_value": 4096}, {"param_name": "ch_number", "param_value": %4}]})")
      .arg(name, from)
      .arg(pin)
      .arg(channels);
}

QString Tee(int outputs) {
  return QStringLiteral(R"({"block_type": "tee", "name": "tee", "input_count": 1, "output_count": %1,
    "sources": [{"source": "source", "pin": "0"}]})")
      .arg(outputs);
}

QString Dumper() {
  return QStringLiteral(R"({"block_type": "dumper", "name": "dumper", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}]})");
}

// At so many entries a second, or as fast as they are fetched when it is 0.
void Load(Blocks input, qint64 blocks, int entriesPerBlock, double perSecond) {
  PreparedBoard::SetPace(perSecond > 0.0 ? static_cast<qint64>(entriesPerBlock / perSecond * 1e9) : 0);
  PreparedBoard::Load(input, blocks);
}

}  // namespace

void Load(qint64 blocks, double eventsPerSecond) {
  Load(EventBlocks(), blocks, EventsPerBlock, eventsPerSecond);
}

Result ToSpectrum(const QString& sourceParameters, qint64 blocks, double eventsPerSecond) {
  Road road(QStringLiteral("energy"), sourceParameters, Spectrum(QStringLiteral("a"), QStringLiteral("source")));
  road.StartCounting(QStringLiteral("a"));
  Load(blocks, eventsPerSecond);
  return ResultOf(road.Run());
}

Result Calibrated(qint64 blocks, double eventsPerSecond) {
  return ToSpectrum(
      QStringLiteral(R"({"param_name": "energy_calibration_expression", "param_value": "0.001*x^2+0.3*x+1.5"})"),
      blocks, eventsPerSecond);
}

Result ToSpectra(const Shape& shape, qint64 blocks, double eventsPerSecond) {
  const bool hasTee = shape.spectra > 1;
  QStringList names;
  QStringList chain = hasTee ? QStringList(Tee(shape.spectra)) : QStringList();
  for (int i = 0; i < shape.spectra; ++i) {
    names << QStringLiteral("spectrum%1").arg(i);
    chain << Spectrum(names.back(), hasTee ? QStringLiteral("tee") : QStringLiteral("source"), i, shape.channels);
  }
  Road road(QStringLiteral("energy"), QString(), chain.join(QLatin1Char(',')));
  for (const QString& name : names) {
    road.StartCounting(name);
  }
  Load(EventBlocks(shape.eventsPerBlock, shape.channels), blocks, shape.eventsPerBlock, eventsPerSecond);
  return ResultOf(road.Run());
}

Result ToFiles(const QString& type, qint64 blocks, double eventsPerSecond,
               const std::function<void(const QString& folder)>& afterwards) {
  const QTemporaryDir folder;
  Road road(QStringLiteral("energy"), QString(), Dumper());
  auto& dumper = dynamic_cast<DataDumper&>(road.Block(QStringLiteral("dumper")));
  dumper.ConfigureDump(EventsPerFile, type, folder.path());
  QDir(folder.path()).mkdir(QStringLiteral("run"));
  dumper.StartDump(QStringLiteral("run"));
  Load(blocks, eventsPerSecond);
  Passage passage = road.Run();
  if (afterwards) {
    passage.cost += Measure([&] { afterwards(folder.path()); });
  }
  return ResultOf(passage);
}

Result ToMedium(qint64 blocks, double eventsPerSecond) {
  return ToFiles(QStringLiteral("BIN"), blocks, eventsPerSecond, Sync);
}

Result PairsToSpectrum(qint64 blocks, double recordsPerSecond) {
  Road road(QStringLiteral("energy_pair"), QString(), Spectrum(QStringLiteral("a"), QStringLiteral("source")));
  road.StartCounting(QStringLiteral("a"));
  Load(PairBlocks(), blocks, PairsPerBlock, recordsPerSecond);
  return ResultOf(road.Run());
}

constexpr const char* SorterAndPosition = R"({"block_type": "time_sorting", "name": "sorter", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}]},
  {"block_type": "position", "name": "a", "input_count": 1, "sources": [{"source": "sorter", "pin": "0"}],
   "parameters": [{"param_name": "positions", "param_value": [0,0,1,1,2,2,3,3,4,4,5,5,6,6,7,7]},
    {"param_name": "correlated_channels", "param_value": [1,0,3,2,5,4,7,6,9,8,11,10,13,12,15,14]},
    {"param_name": "y_positions", "param_value": 64}]})";

// Faster than the order buffer's limits, 10000 events in 5 ms, it drops by design.
Result SortedToPosition(qint64 blocks, double eventsPerSecond) {
  constexpr int PerBlock = 1000;
  const Coincidences coincidences(static_cast<std::size_t>(blocks), PerBlock);
  Road road(QStringLiteral("energy"), QString(), QString::fromLatin1(SorterAndPosition));
  road.StartCounting(QStringLiteral("a"));
  Load(coincidences.Blocks(), blocks, PerBlock, eventsPerSecond);
  return ResultOf(road.Run());
}

Result ToOscilloscope(qint64 blocks) {
  Road road(QStringLiteral("waveform"), QString(),
            QStringLiteral(R"({"block_type": "oscilloscope", "name": "scope", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}], "parameters": [
    {"param_name": "sample_number", "param_value": 4096}, {"param_name": "ch_number", "param_value": 16},
    {"param_name": "ch_analog", "param_value": 1}, {"param_name": "ch_digital", "param_value": 1}]})"));
  Load(WaveBlocks(), blocks, 1, 0);
  return ResultOf(road.Run(), Waves * Samples);
}

}  // namespace bench
