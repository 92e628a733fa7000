#pragma once

#include "client/Read.h"

#include <QJsonObject>
#include <QString>

#include <vector>

namespace korvax::client {

/// Which output of which block an input takes from; without a name it isn't linked.
struct BlockLink {
  QString from;
  int pin = 0;
};

/// A block as the server's configuration made it.
struct ListedBlock {
  QString name;
  QString type;
  QString path;
  std::vector<BlockLink> links;  ///< one an input
  QJsonObject shape;             ///< sizes, or what the block is bound to; its keys depend on the type
};

/// For the block that carries run control.
QString BlocksQuery();

/// Reads the answer to BlocksQuery. Unknown keys are passed over, texts that can't be read are empty.
Read<std::vector<ListedBlock>> ReadBlocks(const QString& answer);

}  // namespace korvax::client
