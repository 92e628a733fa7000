// What the order buffer costs with few and with many events waiting, beside sorting all of them anew for each
// message. One iteration is one message of 1000 events, each up to 50 places out of order, and the groups that
// leave for it.

#include "processing/OrderBuffer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace {

using Events = EnergyEvents;

constexpr int EventsPerMessage = 1000;
constexpr quint64 Spacing = 1;  // some hundred events a group, so that groups cost little

class Stream {
public:
  Events Next() {
    Events events;
    events.reserve(EventsPerMessage);
    for (int i = 0; i < EventsPerMessage; ++i) {
      events.emplace_back().timestamp = ++made_ * Spacing + Spacing * (random_() % 50);
    }
    return events;
  }

private:
  std::minstd_rand random_;
  quint64 made_ = 0;
};

void CountEvents(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * EventsPerMessage);
}

void MakeEvents(benchmark::State& state) {
  Stream stream;
  for (auto _ : state) {
    benchmark::DoNotOptimize(stream.Next());
  }
  CountEvents(state);
}
BENCHMARK(MakeEvents);

void OrderBuffer(benchmark::State& state) {
  const auto waiting = static_cast<std::size_t>(state.range(0));
  Stream stream;
  korvax::OrderBuffer buffer;
  for (auto _ : state) {
    buffer.Add(stream.Next(), 0);
    while (buffer.Size() > waiting) {
      benchmark::DoNotOptimize(buffer.TakeGroup());
    }
  }
  CountEvents(state);
}
BENCHMARK(OrderBuffer)->Arg(100)->Arg(1000)->Arg(9000);

void SortAnew(benchmark::State& state) {
  const auto waiting = static_cast<std::size_t>(state.range(0));
  Stream stream;
  Events buffer;
  for (auto _ : state) {
    std::ranges::move(stream.Next(), std::back_inserter(buffer));
    std::ranges::sort(buffer, {}, &KorvaxPayload_Energy::timestamp);
    if (buffer.size() > waiting) {
      buffer.erase(buffer.begin(), buffer.end() - static_cast<std::ptrdiff_t>(waiting));
    }
  }
  CountEvents(state);
}
BENCHMARK(SortAnew)->Arg(100)->Arg(1000)->Arg(9000);

}  // namespace
