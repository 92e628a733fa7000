#pragma once

#include <QString>
#include <QStringList>

namespace korvax {

/// What the links between blocks have to know of a type of block.
struct BlockPins {
  static constexpr int ByOutputCount = -1;

  QLatin1String type;
  int inputs;         ///< input pins that other blocks can be linked to
  int outputs;        ///< or ByOutputCount: as many as the block's "output_count"
  QStringList taken;  ///< the data types that it can do something with; empty: all
};

/// Null for a type that isn't known. Each type of the configuration's schema is.
const BlockPins* PinsOf(const QString& blockType);

}  // namespace korvax
