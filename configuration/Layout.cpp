#include "configuration/Layout.h"

#include <QJsonArray>

namespace korvax {

namespace {

// Calls `visit` with the path and the object of each element of an array.
template <typename Visit>
void ForEachElement(const QJsonObject& parent, const QStringList& path, const QString& key, Visit visit) {
  const QJsonArray elements = parent[key].toArray();
  for (int i = 0; i < elements.size(); ++i) {
    visit(path + QStringList{key, QString::number(i)}, elements[i].toObject());
  }
}

}  // namespace

Layout Layout::Of(const QJsonObject& configuration) {
  Layout layout;
  ForEachElement(configuration, {}, QStringLiteral("Hardware"), [&](const auto& path, const QJsonObject& board) {
    std::vector<BoardEntry>& entries = board["enable"].toBool() ? layout.boards : layout.disabledBoards;
    entries.push_back({path, board["board_name"].toString(), board});
  });
  const auto addBlock = [&](const auto& path, const QJsonObject& block) {
    layout.blocks.push_back({path, block["block_type"].toString(), block["name"].toString(), block});
  };
  const auto addChain = [&](const auto& path, const QJsonObject& chain) {
    if (chain["enable"].toBool()) {
      ForEachElement(chain, path, QStringLiteral("chain"), addBlock);
    }
  };
  ForEachElement(configuration, {}, QStringLiteral("processing"), [&](const auto& path, const QJsonObject& group) {
    ForEachElement(group, path, QStringLiteral("filter_chain"), addChain);
  });
  return layout;
}

}  // namespace korvax
