#pragma once

#include "client/Read.h"

#include <QJsonObject>

#include <utility>
#include <vector>

namespace korvax::client {

/// A number of records; nothing where an account doesn't tell it, or tells something else than a whole number of
/// at most 2^53 either way.
using Figure = std::optional<qint64>;

/// Where a block gets records from: an output of another one.
struct LedgerInput {
  QString from;
  qint64 pin = 0;  ///< which of the other's outputs
  Figure taken;
};

struct LedgerOutput {
  Figure pushed;
  Figure dropped;  ///< at a full queue
  Figure taken;
  Figure waiting;
};

/// What a block says of its records. In a block at rest received = waiting + all of `became` + missing, for each
/// output made = pushed + dropped, pushed = taken + waiting, and what the inputs took = received.
struct LedgerBlock {
  QString name;
  QString type;
  Figure received;
  Figure waiting;  ///< within the block
  Figure missing;  ///< as the block says
  Figure made;     ///< offered to each output
  std::vector<std::pair<QString, Figure>> became;
  std::vector<LedgerInput> inputs;
  std::vector<LedgerOutput> outputs;
};

/// The account of all records, of a server up to now, or of a run.
struct Ledger {
  std::vector<LedgerBlock> blocks;
  std::optional<bool> balanced;  ///< as the server says
};

/// For the block that carries run control.
QString LedgerQuery();

/// Reads the answer to LedgerQuery.
Read<Ledger> ReadLedger(const QString& answer);

/// Reads the value of the key "ledger". Unknown keys are passed over, figures that can't be read are absent.
Read<Ledger> LedgerOf(const QJsonValue& value);

/// Modulo 2^64, where figures are absurd; nothing if one of them is absent.
Figure Sum(Figure left, Figure right);
Figure Difference(Figure left, Figure right);

}  // namespace korvax::client
