#include "client/BlocksCommand.h"

#include "client/BlockListing.h"
#include "client/QueryClient.h"
#include "client/RunQueries.h"
#include "client/Table.h"

#include <QJsonArray>

namespace korvax::client {

namespace {

QString OriginText(const ListedBlock& block) {
  QStringList texts;
  for (const BlockLink& link : block.links) {
    texts << (link.from.isEmpty() ? QStringLiteral("not linked")
                                  : link.from + QLatin1Char(':') + QString::number(link.pin));
  }
  return texts.isEmpty() ? QStringLiteral("-") : texts.join(QStringLiteral(", "));
}

/// A text or a number as it stands; of a list, how many it has.
QString ValueText(const QJsonValue& value) {
  return value.isArray() ? QString::number(value.toArray().size()) : value.toVariant().toString();
}

QString ShapeText(const QJsonObject& shape) {
  QStringList texts;
  for (const QString& key : shape.keys()) {
    texts << key + QLatin1Char(' ') + ValueText(shape.value(key));
  }
  return texts.isEmpty() ? QStringLiteral("-") : texts.join(QStringLiteral(", "));
}

QString TableOf(const std::vector<ListedBlock>& blocks) {
  const QStringList headings{QStringLiteral("name"), QStringLiteral("type"), QStringLiteral("path"),
                             QStringLiteral("from"), QStringLiteral("shape")};
  Table table(headings, headings.size());
  for (const ListedBlock& block : blocks) {
    table.Add({block.name, block.type, block.path, OriginText(block), ShapeText(block.shape)});
  }
  return table.Lines().join(QLatin1Char('\n'));
}

}  // namespace

Ending ShowBlocks(const ServerAddress& server, const BlocksRequest& request, Console& console) {
  const Reply reply = QueryClient(server, QueryTarget(runBlock)).AskAndWait(BlocksQuery());
  if (reply.Failed()) {
    return reply.ending;
  }
  const Read<std::vector<ListedBlock>> blocks = ReadBlocks(reply.answer);
  if (!blocks.value) {
    return BadAnswerEnding(runBlock, blocks.fault, reply.answer);
  }
  console.Print(request.json ? reply.answer : TableOf(*blocks.value));
  return {};
}

}  // namespace korvax::client
