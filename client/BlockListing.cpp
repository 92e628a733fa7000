#include "client/BlockListing.h"

#include "client/JsonAnswers.h"

namespace korvax::client {

namespace {

ListedBlock BlockOf(const QJsonObject& object) {
  ListedBlock block{object.value(QStringLiteral("name")).toString(),
                    object.value(QStringLiteral("type")).toString(),
                    object.value(QStringLiteral("path")).toString(),
                    {},
                    object.value(QStringLiteral("shape")).toObject()};
  for (const QJsonValue& link : object.value(QStringLiteral("links")).toArray()) {
    block.links.push_back({link[QStringLiteral("from")].toString(), link[QStringLiteral("pin")].toInt()});
  }
  return block;
}

}  // namespace

QString BlocksQuery() {
  return QueryText({{QStringLiteral("cmd"), QStringLiteral("get_blocks")}});
}

Read<std::vector<ListedBlock>> ReadBlocks(const QString& answer) {
  const Read<QJsonDocument> document = ReadJson(answer);
  if (!document.value) {
    return {{}, document.fault};
  }
  const QJsonValue listed = document.value->object().value(QStringLiteral("blocks"));
  if (!listed.isArray()) {
    return {{}, QStringLiteral("it has no array \"blocks\"")};
  }
  std::vector<ListedBlock> blocks;
  for (const QJsonValue& block : listed.toArray()) {
    blocks.push_back(BlockOf(block.toObject()));
  }
  return {blocks, {}};
}

}  // namespace korvax::client
