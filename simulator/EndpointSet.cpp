#include "simulator/EndpointSet.h"

#include "simulator/EventGenerator.h"
#include "simulator/FullEndpoint.h"
#include "simulator/FullRates.h"
#include "simulator/Replay.h"
#include "simulator/WaveformEndpoint.h"

#include <algorithm>

namespace korvax::sim {
namespace {

constexpr std::size_t EnergyVariants = 4;
constexpr std::size_t WaveVariants = 2;

EndpointSet MakeDetectorEndpoints(std::unique_ptr<EventFeed> feed, const DetectorSettings& settings,
                                  std::unique_ptr<Endpoint> waveform, BoardState& state) {
  const auto detector = std::make_shared<Detector>(std::move(feed), settings, state.switches, state.clock);
  return {std::make_unique<DetectorEndpoint>(detector, Stream::Energy),
          std::make_unique<DetectorEndpoint>(detector, Stream::Pairs), std::move(waveform),
          std::make_unique<DetectorEndpoint>(detector, Stream::Counters)};
}

WaveformMaker MakeWaveformMaker(const GeneratorSettings& settings) {
  return WaveformMaker(settings.source, settings.seed, settings.gain);
}

std::unique_ptr<Endpoint> MakeWaveform(const BoardSettings& settings, double rate, BoardState& state) {
  const WaveformMaker maker = MakeWaveformMaker(settings.generator);
  return std::make_unique<WaveformEndpoint>(maker, rate, state.samples, state.switches, state.clock);
}

std::vector<Hit> TakeHits(EventGenerator& generator, std::size_t count, bool pairsOnly) {
  std::vector<Hit> hits;
  while (hits.size() < count) {
    const Hit hit = generator.Take();
    if (hit.completesPair || !pairsOnly) {
      hits.push_back(hit);
    }
  }
  return hits;
}

// Goes on from the channels' numbers so far, and leaves them at the last ones given.
void NumberHits(std::vector<Hit>& hits, std::vector<std::uint32_t>& numbers) {
  for (Hit& hit : hits) {
    hit.number = ++numbers[hit.channel];
  }
}

FullFlow FlowOfEvents(const BoardSettings& settings, const BoardState& state) {
  const double nsPerBlock = settings.pace > 0.0 ? settings.events * 1e9 / settings.pace : 0.0;
  return {settings.blocks, static_cast<std::uint64_t>(nsPerBlock), state.clock};
}

std::unique_ptr<Endpoint> MakeFullPairs(const BoardSettings& settings, const BoardState& state) {
  GeneratorSettings paired = settings.generator;
  paired.coincidence = 1.0;
  paired.channels = std::max(paired.channels, 2U);
  EventGenerator generator(paired);
  std::vector<std::shared_ptr<Block>> blocks;
  for (std::size_t variant = 0; variant < EnergyVariants; ++variant) {
    blocks.push_back(MakePairBlock(TakeHits(generator, settings.events, true)));
  }
  return std::make_unique<FullEndpoint>(std::move(blocks), FlowOfEvents(settings, state));
}

std::unique_ptr<Endpoint> MakeFullWaveforms(const BoardSettings& settings, BoardState& state) {
  constexpr double periodNs = 1e6;
  const WaveformMaker maker = MakeWaveformMaker(settings.generator);
  std::vector<std::shared_ptr<Block>> blocks;
  for (std::size_t variant = 0; variant < WaveVariants; ++variant) {
    const std::uint64_t first = 1 + variant * settings.groups;
    blocks.push_back(maker.Make(first, settings.groups, periodNs, settings.samples, state.switches));
  }
  return std::make_unique<FullEndpoint>(std::move(blocks), FullFlow{settings.blocks, 0, {}});
}

}  // namespace

EndpointSet MakeArrayEndpoints(const BoardSettings& settings, BoardState& state) {
  return MakeDetectorEndpoints(std::make_unique<EventGenerator>(settings.generator), settings.detector,
                               MakeWaveform(settings, settings.waveRate, state), state);
}

EndpointSet MakeReplayEndpoints(const BoardSettings& settings, std::vector<Hit> hits, BoardState& state) {
  DetectorSettings detector = settings.detector;
  detector.lossless = true;
  return MakeDetectorEndpoints(std::make_unique<Replay>(std::move(hits), settings.speed, settings.loop), detector,
                               MakeWaveform(settings, 0.0, state), state);
}

EndpointSet MakeFullEndpoints(const BoardSettings& settings, BoardState& state) {
  EventGenerator generator(settings.generator);
  std::vector<std::shared_ptr<Block>> blocks;
  std::vector<ChannelCounts> counts;
  std::vector<std::uint32_t> numbers(settings.generator.channels, 0);
  for (std::size_t variant = 0; variant < EnergyVariants; ++variant) {
    std::vector<Hit> hits = TakeHits(generator, settings.events, false);
    NumberHits(hits, numbers);
    blocks.push_back(MakeEnergyBlock(hits));
    counts.push_back(CountChannels(hits, settings.generator.channels));
  }
  auto energy = std::make_unique<FullEndpoint>(std::move(blocks), FlowOfEvents(settings, state));
  auto rates = std::make_unique<FullRates>(*energy, std::move(counts), state.clock);
  return {std::move(energy), MakeFullPairs(settings, state), MakeFullWaveforms(settings, state), std::move(rates)};
}

}  // namespace korvax::sim
