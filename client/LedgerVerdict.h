#pragma once

#include "client/Ledger.h"

#include <QStringList>

namespace korvax::client {

/// What an account comes to. Its texts are harmless to a terminal.
struct LedgerVerdict {
  QStringList imbalances;  ///< in words: "spectrum0 misses 5 records"
  QStringList losses;      ///< in words: "source0 dropped 10 at a full queue"
  quint64 lost = 0;        ///< records
  quint64 inHand = 0;      ///< records that blocks have taken and not yet booked, or made and not yet pushed
  quint64 heldBefore = 0;  ///< of a run: records that blocks had in hand when it began, and have no more
  bool readable = true;    ///< all figures that the balance needs are there

  bool Balanced() const { return imbalances.isEmpty(); }
  /// Whether a later reading would find nothing else about these records.
  bool Settled() const { return Balanced() && inHand == 0 && heldBefore == 0; }
};

/// Figures are of a server since its start, or what a run added to them: some may be less than at its beginning.
enum class LedgerSpan { Server, Run };

LedgerVerdict Judge(const Ledger& ledger, LedgerSpan span = LedgerSpan::Server);

/// In one line: "Balanced. 10 records lost: source0 dropped 10 at a full queue."
QString InWords(const LedgerVerdict& verdict);

/// Whether records that met this fate are lost.
bool IsLoss(const QString& fate);

/// The records that a block can't account for; negative where it accounts for too many.
Figure Missing(const LedgerBlock& block);
/// The records that its inputs took and it didn't book yet; 0 without inputs.
Figure NotBooked(const LedgerBlock& block);
/// The records that a block made and neither pushed to this output of its own nor dropped yet.
Figure NotPushed(const LedgerBlock& block, const LedgerOutput& output);
/// The records that vanished in the queue behind an output.
Figure Vanished(const LedgerOutput& output);

}  // namespace korvax::client
