#include "control/QueryRoutes.h"

#include "framework/JsonText.h"
#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

#include <QJsonObject>

#include <algorithm>

namespace korvax {

namespace {

KorvaxBlock* FindBlock(const BlockList& blocks, const QString& (KorvaxBlock::*key)() const, const QString& value) {
  const auto found = std::find_if(blocks.begin(), blocks.end(),
                                  [&](const auto& block) { return (block.get()->*key)() == value; });
  return found == blocks.end() ? nullptr : found->get();
}

}  // namespace

QString AnswerQuery(const BlockList& blocks, const QString& route, const QString& message) {
  const bool generic = route == QLatin1String(GenericRoute);
  KorvaxBlock* const block =
      generic ? FindBlock(blocks, &KorvaxBlock::FullPath, ParseJson(message.toUtf8()).object()["path"].toString())
              : FindBlock(blocks, &KorvaxBlock::Name, route);
  QString answer;
  auto* const handler = dynamic_cast<QueryHandler*>(block);
  if (handler != nullptr && handler->Reach() != (generic ? QueryReach::ByName : QueryReach::ByPath)) {
    QString query = message;
    handler->InterpretMessage(&query, &answer);
  }
  return answer;
}

}  // namespace korvax
