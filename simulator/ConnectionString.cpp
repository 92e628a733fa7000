#include "simulator/ConnectionString.h"

#include "simulator/Status.h"
#include "simulator/Text.h"

#include <array>
#include <set>

namespace korvax::sim {
namespace {

constexpr std::uint64_t Many = 1'000'000'000'000;

template <typename T>
bool Assign(T& target, const std::optional<T>& value) {
  if (value) {
    target = *value;
  }
  return value.has_value();
}

template <typename Integer>
bool Whole(Integer& target, std::string_view text, Integer low, Integer high) {
  return Assign(target, ReadInteger<Integer>(text, low, high));
}

bool Real(double& target, std::string_view text, double low, double high) {
  return Assign(target, ReadReal(text, low, high));
}

bool OpenResult(std::int32_t& target, std::string_view text) {
  if (text == "fail") {
    target = static_cast<std::int32_t>(Status::OpenRefused);
    return true;
  }
  return Whole<std::int32_t>(target, text, -1'000'000, -1);
}

// "N:SECONDS"
bool ReadSpell(Spell& target, std::string_view text) {
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && Whole<std::uint64_t>(target.read, text.substr(0, colon), 1, Many) &&
         Real(target.seconds, text.substr(colon + 1), 0.0, 86400.0);
}

bool CountersInterval(std::uint64_t& target, std::string_view milliseconds) {
  std::uint64_t value = 0;
  const bool good = Whole<std::uint64_t>(value, milliseconds, 0, 3'600'000);
  target = value * 1'000'000;
  return good;
}

constexpr unsigned InArray = 1, InReplay = 2, InFull = 4, Everywhere = 7;

struct Key {
  std::string_view name;
  unsigned modes;
  bool (*read)(BoardSettings& settings, std::string_view value);
};

using S = BoardSettings;
using V = std::string_view;
constexpr std::array keys{
    Key{"channels", Everywhere,
        [](S& s, V v) {
          s.channelsGiven = true;
          return Whole<std::uint32_t>(s.generator.channels, v, 1, 256);
        }},
    Key{"source", InArray | InFull, [](S& s, V v) { return Assign(s.generator.source, SourceFromName(v)); }},
    Key{"rate", InArray | InFull, [](S& s, V v) { return Real(s.generator.rate, v, 0.001, 1e6); }},
    Key{"seed", InArray | InFull, [](S& s, V v) { return Whole<std::uint64_t>(s.generator.seed, v, 0, ~0ULL); }},
    Key{"gain", InArray | InFull, [](S& s, V v) { return Real(s.generator.gain, v, 0.01, 1000.0); }},
    Key{"coincidence", InArray | InFull,
        [](S& s, V v) {
          s.coincidenceGiven = true;
          return Real(s.generator.coincidence, v, 0.0, 1.0);
        }},
    Key{"disorder", InArray | InFull,
        [](S& s, V v) { return Whole<std::uint32_t>(s.generator.disorder, v, 0, 1'000'000'000); }},
    Key{"scene", InArray, [](S& s, V v) { return Assign(s.generator.scene, SceneFromName(v)); }},
    Key{"columns", InArray, [](S& s, V v) { return Whole<std::uint32_t>(s.generator.columns, v, 1, 256); }},
    Key{"queue", InArray, [](S& s, V v) { return Whole<std::size_t>(s.detector.queue, v, 1, 100'000'000); }},
    Key{"block", InArray | InReplay,
        [](S& s, V v) { return Whole<std::size_t>(s.detector.block, v, 1, 1'000'000); }},
    Key{"t0", InArray | InReplay, [](S& s, V v) { return Real(s.detector.t0Rate, v, 0.0, 1e9); }},
    Key{"counters_interval", InArray | InReplay,
        [](S& s, V v) { return CountersInterval(s.detector.countersIntervalNs, v); }},
    Key{"wave_rate", InArray, [](S& s, V v) { return Real(s.waveRate, v, 0.0, 1e6); }},
    Key{"samples", InArray | InFull, [](S& s, V v) { return Whole<std::uint32_t>(s.samples, v, 16, 16384); }},
    Key{"file", InReplay,
        [](S& s, V v) {
          s.file = v;
          return !v.empty();
        }},
    Key{"speed", InReplay, [](S& s, V v) { return Real(s.speed, v, 0.0, 1e9); }},
    Key{"loop", InReplay, [](S& s, V v) { return Assign(s.loop, ReadBoolean(v)); }},
    Key{"events", InFull, [](S& s, V v) { return Whole<std::uint32_t>(s.events, v, 1, 1'000'000); }},
    Key{"groups", InFull, [](S& s, V v) { return Whole<std::uint32_t>(s.groups, v, 1, 64); }},
    Key{"blocks", InFull, [](S& s, V v) { return Whole<std::uint64_t>(s.blocks, v, 0, Many); }},
    Key{"pace", InFull, [](S& s, V v) { return Real(s.pace, v, 0.0, 1e9); }},
    Key{"open", Everywhere, [](S& s, V v) { return OpenResult(s.openResult, v); }},
    Key{"fail_read", Everywhere, [](S& s, V v) { return Whole<std::uint64_t>(s.failRead, v, 0, Many); }},
    Key{"empty", Everywhere, [](S& s, V v) { return Whole<std::uint64_t>(s.emptyRead, v, 0, Many); }},
    Key{"negative", Everywhere, [](S& s, V v) { return Whole<std::uint64_t>(s.negativeRead, v, 0, Many); }},
    Key{"null", Everywhere, [](S& s, V v) { return Whole<std::uint64_t>(s.nullRead, v, 0, Many); }},
    Key{"huge", Everywhere, [](S& s, V v) { return Whole<std::uint64_t>(s.hugeRead, v, 0, Many); }},
    Key{"hang_read", Everywhere, [](S& s, V v) { return ReadSpell(s.hang, v); }},
    Key{"fail_from", Everywhere, [](S& s, V v) { return ReadSpell(s.failing, v); }},
    Key{"crash_free", Everywhere, [](S& s, V v) { return Whole<std::uint64_t>(s.crashFree, v, 0, Many); }},
};

// Settles what depends on the scene, once all keys are read; false where they don't go together.
bool SettleScene(BoardSettings& settings) {
  GeneratorSettings& generator = settings.generator;
  switch (generator.scene) {
    case Scene::Pixels:
      return generator.columns <= generator.channels;
    case Scene::Strips:
      if (!settings.coincidenceGiven) {
        generator.coincidence = 1.0 - DetectorModel::NoiseShare;
      }
      return generator.columns == 0 && generator.channels % 2 == 0;
    case Scene::None:
      break;
  }
  return generator.columns == 0;
}

std::optional<Mode> ModeFromName(std::string_view name) {
  if (name == "array") {
    return Mode::Array;
  }
  if (name == "replay") {
    return Mode::Replay;
  }
  return name == "full" ? std::optional(Mode::Full) : std::nullopt;
}

unsigned BitOf(Mode mode) {
  return 1U << static_cast<unsigned>(mode);
}

bool ReadPair(BoardSettings& settings, std::string_view name, std::string_view value) {
  for (const Key& key : keys) {
    if (key.name == name) {
      return (key.modes & BitOf(settings.mode)) != 0 && key.read(settings, value);
    }
  }
  return false;
}

bool ReadPairs(BoardSettings& settings, std::string_view text) {
  std::set<std::string_view> seen;
  for (const std::string_view pair : Split(text, '&')) {
    const std::size_t equals = pair.find('=');
    if (equals == std::string_view::npos || !seen.insert(pair.substr(0, equals)).second ||
        !ReadPair(settings, pair.substr(0, equals), pair.substr(equals + 1))) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::optional<BoardSettings> ParseConnectionString(std::string_view text) {
  constexpr std::string_view scheme = "sim:";
  if (!text.starts_with(scheme)) {
    return std::nullopt;
  }
  text.remove_prefix(scheme.size());
  const std::size_t question = text.find('?');
  const std::optional<Mode> mode = ModeFromName(text.substr(0, question));
  if (!mode) {
    return std::nullopt;
  }
  BoardSettings settings;
  settings.mode = *mode;
  if (question != std::string_view::npos && !ReadPairs(settings, text.substr(question + 1))) {
    return std::nullopt;
  }
  return SettleScene(settings) ? settings : std::optional<BoardSettings>();
}

}  // namespace korvax::sim
