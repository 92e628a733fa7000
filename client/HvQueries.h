#pragma once

#include "client/Read.h"

#include <QStringList>

#include <vector>

namespace korvax::client {

/// A board's parameter with its value, or its values by channel, as the board gives them.
struct BoardValue {
  QString name;
  bool isArray = false;
  QStringList values;  ///< exactly one where it isn't an array
};

QString AllValuesQuery();
QString ReadOnlyValuesQuery();
QString SwitchQuery(bool on);

/// Reads the answer to AllValuesQuery. Values stand there as the board gives them, without quotes, so the
/// answer is mostly not JSON: a value ends where a comma and the next name follow, or the answer ends. Values
/// with commas in them can't be told apart within an array.
Read<std::vector<BoardValue>> ReadAllValues(const QString& answer);

/// Whether the answer to a query for values says that no board is there.
bool SaysNotConnected(const QString& answer);

}  // namespace korvax::client
