#include "framework/KorvaxBlock.h"

KorvaxBlock::KorvaxBlock(const QString& blockType, bool dumpCapable, const ChainContext& context, QObject* parent)
    : QObject(parent),
      blockType_(blockType),
      dumpCapable_(dumpCapable),
      context_(context),
      fullPath_(context.fullPath) {}

KorvaxBlock::~KorvaxBlock() = default;

bool KorvaxBlock::ParseParameters(const QJsonValue& /*block*/) {
  return true;
}

void KorvaxBlock::ReadCommonKeys(const QJsonValue& block) {
  const QJsonObject keys = block.toObject();
  SetName(keys["name"].toString());
  dataType_ = keys["data_type"].toString();
}

PinInput& KorvaxBlock::AddInput() {
  return *inputs_.emplace_back(std::make_unique<PinInput>(dataType_));
}

PinOutput& KorvaxBlock::AddOutput() {
  return *outputs_.emplace_back(std::make_unique<PinOutput>(dataType_));
}
