#include "control/BlockDescriptions.h"

#include "control/PinOrigins.h"
#include "framework/KorvaxBlock.h"

#include <QJsonArray>

namespace korvax {

namespace {

QJsonArray LinksOf(const KorvaxBlock& block, const PinOrigins& origins) {
  QJsonArray links;
  for (const auto& input : block.Inputs()) {
    const PinOrigin origin = origins.Of(*input);
    links.append(QJsonObject{{QStringLiteral("from"), origin.from}, {QStringLiteral("pin"), origin.pin}});
  }
  return links;
}

QJsonObject Description(const KorvaxBlock& block, const PinOrigins& origins) {
  return {{QStringLiteral("type"), block.BlockType()},
          {QStringLiteral("name"), block.Name()},
          {QStringLiteral("path"), block.FullPath()},
          {QStringLiteral("links"), LinksOf(block, origins)},
          {QStringLiteral("outputs"), static_cast<int>(block.Outputs().size())},
          {QStringLiteral("shape"), block.Shape()}};
}

}  // namespace

QJsonObject DescribeBlocks(const BlockList& blocks, const std::optional<QString>& name) {
  const PinOrigins origins(blocks);
  QJsonArray descriptions;
  for (const auto& block : blocks) {
    const bool isConfigured = block->BlockType() != QLatin1String("commands");
    if (isConfigured && (!name || block->Name() == *name)) {
      descriptions.append(Description(*block, origins));
    }
  }
  return {{QStringLiteral("blocks"), descriptions}};
}

}  // namespace korvax
