#include "server/ChainAssembly.h"

#include "framework/KorvaxBlock.h"
#include "server/BlockFactory.h"

#include <QtDebug>

#include <algorithm>

namespace {

// In quotes and on one line, whatever the text holds.
QString Quoted(const QString& text) {
  QString quoted;
  QDebug(&quoted).nospace() << text;
  return quoted;
}

}  // namespace

ChainAssembly::ChainAssembly(const BoardList& boards, BlockList& blocks, const QString& configurationPath)
    : boards_(boards), blocks_(blocks), configurationPath_(configurationPath) {}

QString ChainAssembly::Build(const QJsonArray& processing) {
  for (int group = 0; group < processing.size(); ++group) {
    const QJsonArray chains = processing[group].toObject()["filter_chain"].toArray();
    for (const QJsonValue& value : chains) {
      const QJsonObject chain = value.toObject();
      const QString fault = chain["enable"].toBool() ? BuildChain(group, chain) : QString();
      if (!fault.isEmpty()) {
        return fault;
      }
    }
  }
  return {};
}

QString ChainAssembly::BuildChain(int group, const QJsonObject& chain) {
  const QString chainName = chain["name"].toString();
  const QJsonArray descriptions = chain["chain"].toArray();
  for (const QJsonValue& value : descriptions) {
    const QJsonObject description = value.toObject();
    const QString blockName = description["name"].toString();
    const QString fullPath = QStringLiteral("processing/%1/filter_chain/").arg(group) + chainName +
                             QStringLiteral("/chain/") + blockName;
    const QString fault = BuildBlock(fullPath, description);
    if (!fault.isEmpty()) {
      return QStringLiteral("Processing group %1, chain ").arg(group) + Quoted(chainName) +
             QStringLiteral(", block ") + Quoted(blockName) + QStringLiteral(", ") + fault;
    }
  }
  return {};
}

QString ChainAssembly::BuildBlock(const QString& fullPath, const QJsonObject& description) {
  const QString type = description["block_type"].toString();
  auto block = BlockFactory::Create(type, {&boards_, &blocks_, fullPath, configurationPath_}, description);
  if (block == nullptr) {
    return QStringLiteral("key \"block_type\": expected one of ") + BlockFactory::KnownTypes() +
           QStringLiteral("; found ") + Quoted(type);
  }
  QString fault = block->Fault();
  if (fault.isEmpty() && type != QLatin1String("source")) {
    fault = LinkInputs(description, *block);
  }
  blocks_.push_back(std::move(block));
  return fault;
}

QString ChainAssembly::LinkInputs(const QJsonObject& description, KorvaxBlock& block) const {
  const int inputCount = description["input_count"].toInt();
  const QJsonArray sources = description["sources"].toArray();
  const auto pins = static_cast<int>(block.Inputs().size());
  if (inputCount > sources.size() || inputCount > pins) {
    return QStringLiteral(
               "key \"input_count\": expected at most %1 (the block has %2 input pins and \"sources\" "
               "%3 entries); found %4")
        .arg(std::min(pins, sources.size()))
        .arg(pins)
        .arg(sources.size())
        .arg(inputCount);
  }
  for (int i = 0; i < inputCount; ++i) {
    const QString fault = LinkInput(sources[i].toObject(), i, block);
    if (!fault.isEmpty()) {
      return fault;
    }
  }
  return {};
}

QString ChainAssembly::LinkInput(const QJsonObject& source, int index, KorvaxBlock& block) const {
  const QString upstreamName = source["source"].toString();
  KorvaxBlock* const upstream = FindBlock(upstreamName);
  if (upstream == nullptr) {
    return QStringLiteral(
               "key \"sources\"[%1].\"source\": expected the name of a block that stands earlier in the "
               "file; found ")
               .arg(index) +
           Quoted(upstreamName);
  }
  // Kept: the pin is a text; a JSON number reads as pin 0.
  const int pin = source["pin"].toString().toInt();
  const auto outputs = static_cast<int>(upstream->Outputs().size());
  if (pin < 0 || pin >= outputs) {
    return QStringLiteral(
               "key \"sources\"[%1].\"pin\": expected the index, as a text, of one of the %2 output pins "
               "of ")
               .arg(index)
               .arg(outputs) +
           Quoted(upstreamName) + QStringLiteral(", counted from 0; found %1").arg(pin);
  }
  block.Inputs()[static_cast<std::size_t>(index)]->Connect(
      upstream->Outputs()[static_cast<std::size_t>(pin)].get());
  return {};
}

KorvaxBlock* ChainAssembly::FindBlock(const QString& name) const {
  const auto found =
      std::find_if(blocks_.begin(), blocks_.end(), [&](const auto& block) { return block->Name() == name; });
  return found == blocks_.end() ? nullptr : found->get();
}
