#include "control/QueryRoutes.h"

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <initializer_list>

namespace korvax {

namespace {

const std::initializer_list<QLatin1String> GenericTypes = {
    QLatin1String("image"),         QLatin1String("position"),           QLatin1String("spectrum"),
    QLatin1String("tof_histogram"), QLatin1String("rate_counters_sink"), QLatin1String("hv")};
const std::initializer_list<QLatin1String> NamedTypes = {QLatin1String("oscilloscope"), QLatin1String("dumper"),
                                                         QLatin1String("commands"), QLatin1String("hv")};

KorvaxBlock* FindBlock(const BlockList& blocks, const QString& (KorvaxBlock::*key)() const, const QString& value) {
  const auto found = std::find_if(blocks.begin(), blocks.end(),
                                  [&](const auto& block) { return (block.get()->*key)() == value; });
  return found == blocks.end() ? nullptr : found->get();
}

bool Serves(const std::initializer_list<QLatin1String>& types, const KorvaxBlock& block) {
  return std::find(types.begin(), types.end(), block.BlockType()) != types.end();
}

}  // namespace

QString AnswerQuery(const BlockList& blocks, const QString& route, const QString& message) {
  const bool generic = route == QLatin1String(GenericRoute);
  KorvaxBlock* const block = generic
                                 ? FindBlock(blocks, &KorvaxBlock::FullPath,
                                             QJsonDocument::fromJson(message.toUtf8()).object()["path"].toString())
                                 : FindBlock(blocks, &KorvaxBlock::Name, route);
  QString answer;
  auto* const handler = dynamic_cast<QueryHandler*>(block);
  if (handler != nullptr && Serves(generic ? GenericTypes : NamedTypes, *block)) {
    QString query = message;
    handler->InterpretMessage(&query, &answer);
  }
  return answer;
}

}  // namespace korvax
