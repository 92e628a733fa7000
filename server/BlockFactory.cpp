#include "server/BlockFactory.h"

#include "acquisition/Source.h"
#include "boards/HV.h"
#include "recording/DataDumper.h"
#include "recording/SinkRateCounter.h"
#include "sinks/Histogram.h"
#include "sinks/Oscilloscope.h"

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
    BlockTypeEntry{"spectrum", Make<Histogram>},
    BlockTypeEntry{"oscilloscope", Make<Oscilloscope>},
    BlockTypeEntry{"dumper", Make<DataDumper>},
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
