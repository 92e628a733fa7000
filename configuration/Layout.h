#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace korvax {

/// One entry of "Hardware".
struct BoardEntry {
  QStringList path;
  QString name;
  QJsonObject keys;
};

/// A block that the server would build.
struct BlockEntry {
  QStringList path;
  QString type;
  QString name;
  QJsonObject keys;
};

/// The enabled boards and blocks of a configuration, in the order in which the server goes through them.
struct Layout {
  std::vector<BoardEntry> boards;
  std::vector<BoardEntry> disabledBoards;
  std::vector<BlockEntry> blocks;

  static Layout Of(const QJsonObject& configuration);
};

}  // namespace korvax
