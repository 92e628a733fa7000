// Whole roads, from a board that has its data ready to the block at the end: CPU time of all threads an event
// beside the bare loop. All roads are taken in turns, five times. Printed are, of the rounds that lost the least,
// the least cost and the highest rate, each also as a multiple of what the road is compared with; the losses of
// the worst round and how many rounds lost nothing; the median of answers in the best round, and their 99 % in the
// worst.
//
// korvax-bench-roads [ROAD...]

#include "benchmarks/AskedRoads.h"
#include "benchmarks/Baselines.h"
#include "benchmarks/Inputs.h"
#include "benchmarks/Roads.h"
#include "server/ProcessSettings.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using bench::Result;
using bench::Rounds;

constexpr int RoundsTaken = 5;

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

auto Copies(std::size_t places) {
  return [places](qint64 blocks, double /*rate*/) { return bench::CopySamples(places, blocks); };
}

auto Spectrum() {
  return [](qint64 blocks, double rate) { return bench::ToSpectrum(QString(), blocks, rate); };
}

auto Spectra(const bench::Shape& shape) {
  return [shape](qint64 blocks, double rate) { return bench::ToSpectra(shape, blocks, rate); };
}

auto Files(const char* type) {
  return [type](qint64 blocks, double rate) { return bench::ToFiles(QString::fromLatin1(type), blocks, rate); };
}

auto Asked(const bench::Asking& asking) {
  return [asking](qint64 blocks, double rate) { return bench::ToAskedSpectrum(blocks, rate, asking); };
}

const std::vector<RoadEntry>& Roads() {
  using bench::Channels;
  static const std::vector<RoadEntry> roads{
      {"bare loop", Unpaced(bench::BareLoop), 50'000, 0, "bare loop"},
      {"spectrum", Spectrum(), 100'000, 50, "bare loop"},
      {"spectrum, most", Spectrum(), 100'000, 0, "bare loop"},
      {"calibrated", bench::Calibrated, 100'000, 50, "spectrum"},
      {"tee", Spectra({.spectra = 2}), 50'000, 25, "bare loop"},
      {"tee, most", Spectra({.spectra = 2}), 50'000, 0, "bare loop"},
      {"bin", Files("BIN"), 40'000, 40, "bare loop"},
      {"bin, most", Files("BIN"), 40'000, 0, "bare loop"},
      {"write(2)", Unpaced(bench::PlainWrite), 40'000, 0, "write(2)"},
      {"bin to medium", bench::ToMedium, 40'000, 40, "write(2)"},
      {"csv", Files("CSV"), 10'000, 0, "bare loop"},
      {"json", Files("JSON"), 10'000, 0, "bare loop"},
      {"pairs", bench::PairsToSpectrum, 500, 0.5, "bare loop"},
      {"pairs, most", bench::PairsToSpectrum, 500, 0, "bare loop"},
      {"sorted, 0.5", bench::SortedToPosition, 500, 0.5, "bare loop"},
      {"sorted, 1", bench::SortedToPosition, 1'000, 1, "bare loop"},
      {"sorted, 1.5", bench::SortedToPosition, 1'500, 1.5, "bare loop"},
      {"sorted, 10", bench::SortedToPosition, 10'000, 10, "bare loop"},
      {"memcpy", Copies(1), 5'000, 0, "memcpy"},
      {"memcpy, 4 places", Copies(4), 5'000, 0, "memcpy"},
      {"scope", Unpaced(bench::ToOscilloscope), 5'000, 0, "memcpy"},
      {"ready text", Unpaced(bench::AnswerOfReadyText), 20'000, 0, "ready text"},
      {"get_data", Unpaced(bench::AnswerOfSpectrum), 20'000, 0, "ready text"},
      {"unasked", Asked({}), 150'000, 50, "unasked"},
      {"asked 10/s", Asked({1, Channels, 100}), 150'000, 50, "unasked"},
      {"500 clients", Asked({500, 1, 1'000}), 150'000, 50, "unasked"},
      {"rate 1", Spectra({}), 2'000, 1, "spectrum"},
      {"rate 10", Spectra({}), 20'000, 10, "spectrum"},
      {"1 channel", Spectra({.channels = 1}), 100'000, 50, "spectrum"},
      {"1024 channels", Spectra({.channels = 1024}), 100'000, 50, "spectrum"},
      {"blocks of 100", Spectra({.eventsPerBlock = 100}), 200'000, 10, "spectrum"},
      {"blocks of 10", Spectra({.eventsPerBlock = 10}), 200'000, 1, "spectrum"},
      {"blocks of 1", Spectra({.eventsPerBlock = 1}), 200'000, 0.1, "spectrum"},
      {"4 spectra", Spectra({.spectra = 4}), 24'000, 12, "spectrum"},
      {"8 spectra", Spectra({.spectra = 8}), 12'000, 6, "spectrum"},
  };
  return roads;
}

// When it is named, or what is wanted is compared with it.
bool IsWanted(const std::vector<std::string>& names, const RoadEntry& road) {
  const auto comparesWithIt = [&](const RoadEntry& other) {
    return &other != &road && std::strcmp(other.base, road.name) == 0 && IsWanted(names, other);
  };
  return names.empty() || std::find(names.begin(), names.end(), road.name) != names.end() ||
         std::any_of(Roads().begin(), Roads().end(), comparesWithIt);
}

void PrintHead() {
  std::printf("%-16s %9s %9s %-11s %10s %9s %9s %6s %10s %8s\n", "road", "CPU ns", "", "", "million/s", "", "lost",
              "whole", "median ms", "99 % ms");
}

// Rates are compared where it isn't the board that sets them.
void Print(const RoadEntry& road, const std::map<std::string, Rounds>& rounds) {
  const Rounds& of = rounds.at(road.name);
  const Result& best = of.Best();
  const Result& base = rounds.at(road.base).Best();
  std::printf("%-16s %9.2f %7.2f x %-11s", road.name, best.cpuNs, best.cpuNs / base.cpuNs, road.base);
  if (best.rate > 0.0) {
    std::printf(" %10.2f %7.2f x", best.rate * 1e-6, best.rate / base.rate);
  }
  if (best.made > 0) {
    std::printf(" %7.2f %% %4d/%d", of.MostLost() * 100.0, of.Whole(), of.Number());
  }
  if (best.answers.answers > 0) {
    std::printf("%*s%10.2f %8.2f", best.made > 0 ? 1 : 39, "", best.answers.medianMs, of.SlowestMs());
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
  std::map<std::string, Rounds> rounds;
  for (int round = 0; round < RoundsTaken; ++round) {
    for (const RoadEntry& road : Roads()) {
      if (IsWanted(names, road)) {
        rounds[road.name].Add(road.run(road.blocks, road.millionsPerSecond * 1e6));
      }
    }
  }
  PrintHead();
  for (const RoadEntry& road : Roads()) {
    if (rounds.count(road.name) != 0) {
      Print(road, rounds);
    }
  }
  return 0;
}
