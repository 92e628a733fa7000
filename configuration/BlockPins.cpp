#include "configuration/BlockPins.h"

#include <algorithm>

namespace korvax {

const BlockPins* PinsOf(const QString& blockType) {
  static const QStringList events{QStringLiteral("energy"), QStringLiteral("energy_pair")};
  static const BlockPins types[] = {
      {QLatin1String("source"), 0, 1, {}},
      {QLatin1String("time_sorting"), 1, 1, events},
      {QLatin1String("tee"), 1, BlockPins::ByOutputCount, {}},
      {QLatin1String("position"), 1, 0, events},
      {QLatin1String("image"), 1, 0, events},
      {QLatin1String("spectrum"), 1, 0, events},
      {QLatin1String("tof_histogram"), 1, 0, events},
      {QLatin1String("dumper"), 1, 0, events},
      {QLatin1String("oscilloscope"), 1, 0, {QStringLiteral("waveform")}},
      {QLatin1String("rate_counters_sink"), 1, 0, {QStringLiteral("rate_counters")}},
      {QLatin1String("hv"), 0, 0, {}},
  };
  const auto* const found = std::find_if(std::begin(types), std::end(types),
                                         [&](const BlockPins& pins) { return pins.type == blockType; });
  return found == std::end(types) ? nullptr : found;
}

}  // namespace korvax
