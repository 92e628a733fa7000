#pragma once

#include "client/LedgerVerdict.h"

#include <QStringList>

namespace korvax::client {

/// An account as a table, a row a block. Losses and what doesn't fit stand in red or, without colours, behind a
/// "!". Waiting is what waits within a block and in the queues before it. Where a block has several outputs, the
/// figures of each are parted by "+".
QStringList LedgerLines(const Ledger& ledger, bool coloured);

/// The line below: the verdict in words, in red where records are lost or missing and there are colours.
QString ClosingLine(const LedgerVerdict& verdict, bool coloured);

}  // namespace korvax::client
