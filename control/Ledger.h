#pragma once

#include "control/PinOrigins.h"
#include "framework/Account.h"
#include "framework/ChainContext.h"
#include "framework/PinOutput.h"

#include <QJsonObject>
#include <QString>

#include <vector>

namespace korvax {

/// What became of every record, block by block: the accounts of all blocks and of the pins between them. The
/// numbers of one block belong together. Those of different blocks are of moments shortly after each other, read
/// against the stream, so that what is under way stands as "in hand" and nothing counts twice.
class Ledger {
public:
  struct Input : PinOrigin {
    quint64 taken = 0;
  };
  struct Entry {
    QString name;
    QString type;
    QString path;
    Account::Statement account;
    std::vector<Fate> possibleFates;
    std::vector<Input> inputs;
    std::vector<PinCounts> outputs;
    std::vector<quint64> arrived;  ///< for each output, what the inputs linked to it have taken

    /// Received, and neither waiting nor accounted for: always 0, unless the server has a fault. Modulo 2^64.
    quint64 Missing() const { return account.received - account.waiting - account.fates.Sum(); }
    /// Taken from the inputs and not accounted for yet, or made and not pushed yet. 0 at rest.
    quint64 InHand() const;
    /// A filter has made as many records as it says that it passed on. True at rest.
    bool HasPassedOn() const;
    /// What left the queues behind the outputs is where they lead to. True at rest.
    bool HasArrived() const;
  };

  /// As it stands now. Main thread.
  static Ledger Of(const BlockList& blocks);

  /// Leaves the entries of blocks of another name out.
  void KeepOnly(const QString& name);

  const std::vector<Entry>& Entries() const { return entries_; }
  /// Nothing is missing in or between the blocks, and nothing is in hand.
  bool IsBalanced() const;

  /// What was added since `earlier`, a ledger of the same blocks, modulo 2^64: less may wait than did then.
  Ledger Since(const Ledger& earlier) const;

  /// {"time":"...","blocks":[...],"balanced":true}; see docs/queries.md.
  QJsonObject ToJson() const;

private:
  std::vector<Entry> entries_;
};

}  // namespace korvax
