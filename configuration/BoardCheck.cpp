#include "configuration/BoardCheck.h"

#include "configuration/Words.h"

#include <QHash>
#include <QJsonArray>

namespace korvax {

namespace {

QStringList EndpointNames(const BoardEntry& board) {
  QStringList names;
  for (const QJsonValue& endpoint : board.keys["endpoints"].toArray()) {
    names << endpoint.toObject()["name"].toString();
  }
  return names;
}

void CheckEndpoints(const BoardEntry& board, FindingList& findings) {
  const QStringList names = EndpointNames(board);
  for (int i = 0; i < names.size(); ++i) {
    const int first = names.indexOf(names[i]);
    if (first < i && !names[i].isEmpty()) {
      findings.Warn(
          board.path + QStringList{"endpoints", QString::number(i), "name"},
          QStringLiteral("a name that no other endpoint of the board has"),
          QStringLiteral("%1, which is also endpoints[%2]").arg(Quoted(names[i]), QString::number(first)));
    }
  }
}

void CheckCommands(const BoardEntry& board, FindingList& findings) {
  static const QStringList endpointCommands{QStringLiteral("start"), QStringLiteral("stop"),
                                            QStringLiteral("reset")};
  const QStringList names = EndpointNames(board);
  const QJsonArray commands = board.keys["commands"].toArray();
  for (int i = 0; i < commands.size(); ++i) {
    const QJsonObject command = commands[i].toObject();
    const QJsonValue endpoint = command["endpoint_type"];
    if (endpointCommands.contains(command["command_type"].toString()) && !names.contains(endpoint.toString())) {
      findings.Warn(board.path + QStringList{"commands", QString::number(i), "endpoint_type"},
                    QStringLiteral("the name of an endpoint of this board, as the command is never sent without"),
                    ValueText(endpoint) + Suggestion(endpoint.toString(), names));
    }
  }
}

}  // namespace

void CheckBoards(const Layout& layout, FindingList& findings) {
  QHash<QString, int> firsts;
  for (std::size_t i = 0; i < layout.boards.size(); ++i) {
    const BoardEntry& board = layout.boards[i];
    CheckEndpoints(board, findings);
    CheckCommands(board, findings);
    const auto first = firsts.constFind(board.name);
    if (first == firsts.constEnd()) {
      firsts.insert(board.name, static_cast<int>(i));
    } else if (!board.name.isEmpty()) {
      const QString other = layout.boards[static_cast<std::size_t>(*first)].path.last();
      findings.Warn(board.path + QStringList{"board_name"},
                    QStringLiteral("a name that no other board has, as sources find the first one only"),
                    QStringLiteral("%1, which is also Hardware[%2]").arg(Quoted(board.name), other));
    }
  }
}

}  // namespace korvax
