#include "configuration/BoardCheck.h"

#include "configuration/Words.h"

#include <QHash>
#include <QJsonArray>

namespace korvax {

namespace {

struct EndpointNames {
  QStringList inOrder;
  QHash<QString, int> firsts;  // the first endpoint of each name
};

EndpointNames CheckEndpoints(const BoardEntry& board, FindingList& findings) {
  EndpointNames names;
  const QJsonArray endpoints = board.keys["endpoints"].toArray();
  for (int i = 0; i < endpoints.size(); ++i) {
    const QString name = endpoints[i].toObject()["name"].toString();
    names.inOrder << name;
    const auto first = names.firsts.constFind(name);
    if (first == names.firsts.constEnd()) {
      names.firsts.insert(name, i);
    } else if (!name.isEmpty()) {
      findings.Warn(board.path + QStringList{"endpoints", QString::number(i), "name"},
                    QStringLiteral("a name that no other endpoint of the board has"),
                    QStringLiteral("%1, which is also endpoints[%2]").arg(Quoted(name), QString::number(*first)));
    }
  }
  return names;
}

void CheckCommands(const BoardEntry& board, const EndpointNames& names, FindingList& findings) {
  static const QStringList endpointCommands{QStringLiteral("start"), QStringLiteral("stop"),
                                            QStringLiteral("reset")};
  const QJsonArray commands = board.keys["commands"].toArray();
  for (int i = 0; i < commands.size(); ++i) {
    const QJsonObject command = commands[i].toObject();
    const QJsonValue endpoint = command["endpoint_type"];
    if (endpointCommands.contains(command["command_type"].toString()) &&
        !names.firsts.contains(endpoint.toString())) {
      findings.Warn(board.path + QStringList{"commands", QString::number(i), "endpoint_type"},
                    QStringLiteral("the name of an endpoint of this board, as the command is never sent without"),
                    [&] { return ValueText(endpoint) + Suggestion(endpoint.toString(), names.inOrder); });
    }
  }
}

// A file that is saved while the server runs configures connected boards by name alone.
void CheckDisabled(const Layout& layout, const QHash<QString, int>& enabled, FindingList& findings) {
  for (const BoardEntry& board : layout.disabledBoards) {
    if (!board.name.isEmpty() && enabled.contains(board.name)) {
      findings.Warn(board.path + QStringList{"board_name"},
                    QStringLiteral("another name than that of an enabled board, as each save of the file applies "
                                   "these \"configs\" to it, too"),
                    Quoted(board.name));
    }
  }
}

}  // namespace

void CheckBoards(const Layout& layout, FindingList& findings) {
  QHash<QString, int> firsts;
  for (std::size_t i = 0; i < layout.boards.size(); ++i) {
    const BoardEntry& board = layout.boards[i];
    CheckCommands(board, CheckEndpoints(board, findings), findings);
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
  CheckDisabled(layout, firsts, findings);
}

}  // namespace korvax
