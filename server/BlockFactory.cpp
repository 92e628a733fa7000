#include "server/BlockFactory.h"

#include "acquisition/Source.h"
#include "boards/HV.h"
#include "processing/Process_Tee.h"
#include "processing/Process_Time_Sorting.h"
#include "recording/DataDumper.h"
#include "recording/SinkRateCounter.h"
#include "sinks/Histogram.h"
#include "sinks/Image.h"
#include "sinks/Oscilloscope.h"
#include "sinks/Position.h"
#include "sinks/time_distribution.h"

#include <algorithm>
#include <array>

namespace {

using Maker = std::unique_ptr<KorvaxBlock> (*)(const ChainContext& context, const QJsonObject& block);

template <typename Block>
std::unique_ptr<KorvaxBlock> Make(const ChainContext& context, const QJsonObject& block) {
  return std::make_unique<Block>(nullptr, context, block);
}

struct BlockTypeEntry {
  const char* keyword;
  Maker make;
};

constexpr std::array BlockTypes{
    BlockTypeEntry{"source", Make<Source>},
    BlockTypeEntry{"time_sorting", Make<Process_Time_Sorting>},
    BlockTypeEntry{"tee", Make<Process_Tee>},
    BlockTypeEntry{"position", Make<Position>},
    BlockTypeEntry{"image", Make<Image>},
    BlockTypeEntry{"spectrum", Make<Histogram>},
    BlockTypeEntry{"tof_histogram", Make<time_distribution>},
    BlockTypeEntry{"dumper", Make<DataDumper>},
    BlockTypeEntry{"oscilloscope", Make<Oscilloscope>},
    BlockTypeEntry{"rate_counters_sink", Make<SinkRateCounter>},
    BlockTypeEntry{"hv", Make<HV>},
};

}  // namespace

namespace BlockFactory {

std::unique_ptr<KorvaxBlock> Create(const QString& blockType, const ChainContext& context,
                                    const QJsonObject& block) {
  const auto found = std::find_if(BlockTypes.begin(), BlockTypes.end(), [&](const BlockTypeEntry& entry) {
    return blockType == QLatin1String(entry.keyword);
  });
  return found == BlockTypes.end() ? nullptr : found->make(context, block);
}

QString KnownTypes() {
  QStringList keywords;
  for (const BlockTypeEntry& entry : BlockTypes) {
    keywords << QLatin1String(entry.keyword);
  }
  return keywords.join(QLatin1String(", "));
}

}  // namespace BlockFactory
