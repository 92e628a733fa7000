#pragma once

#include "framework/Lock.h"

#include <QtGlobal>

#include <array>
#include <atomic>
#include <utility>
#include <vector>

namespace korvax {

/// What can become of a record in a block.
enum class Fate : quint8 {
  Decoded,          ///< made into records
  PassedOver,       ///< entry of a board without a record, or of a type that isn't decoded
  Refused,          ///< in a block of a board whose numbers can't be true
  Copied,           ///< to every output
  Grouped,          ///< passed on in a group
  DroppedFull,      ///< refused by a full order buffer
  Counted,          ///< in a histogram, map or image
  Cut,              ///< outside the energy cuts
  OutOfRange,       ///< no bin or pixel for it
  RepeatedChannel,  ///< in a group that has a channel twice
  WhileStopped,     ///< arrived while the block wasn't set running
  WhilePaused,
  Written,      ///< to a file that still has it
  Overwritten,  ///< was written, to a file that was used again for other records
  NotWritten,   ///< could not be written
  LeftOut,      ///< not to be written by the block's settings
  Other,        ///< not of the block's kind, or the block has no room to count
};
inline constexpr std::size_t FateCount = static_cast<std::size_t>(Fate::Other) + 1;

/// As clients read it: "while_stopped".
const char* NameOf(Fate fate);

/// Numbers of records by fate.
class Fates {
public:
  quint64& operator[](Fate fate) { return records_[static_cast<std::size_t>(fate)]; }
  quint64 operator[](Fate fate) const { return records_[static_cast<std::size_t>(fate)]; }
  Fates& operator+=(const Fates& more);
  Fates& operator-=(const Fates& fewer);
  quint64 Sum() const;

private:
  std::array<quint64, FateCount> records_{};
};

/// The closed account of a block: each record that it has received stands in one place. Booked once a message, so
/// that it can always be on. Counts from the start of the process, modulo 2^64.
class Account {
public:
  struct Statement {
    quint64 received = 0;
    quint64 waiting = 0;  ///< held inside the block
    Fates fates;
    quint64 made = 0;  ///< records offered to each output
  };

  /// The fates that can befall records here.
  explicit Account(std::vector<Fate> fates) : possible_(std::move(fates)) {}

  const std::vector<Fate>& PossibleFates() const { return possible_; }

  // The block's working thread.

  /// Adds what was received and what became of it, in one.
  void Book(quint64 received, const Fates& fates) { Book(received, fates, 0); }
  /// The same; so many records now wait inside.
  void Book(quint64 received, const Fates& fates, quint64 waiting);
  /// Records that are about to be pushed to every output.
  void BookMade(quint64 records) {
    made_.store(made_.load(std::memory_order_relaxed) + records, std::memory_order_relaxed);
  }

  /// Any thread.
  Statement Get() const;

private:
  const std::vector<Fate> possible_;
  mutable QMutex mutex_;
  Statement statement_;  // guarded by mutex_, but for `made`
  std::atomic<quint64> made_ = 0;
};

}  // namespace korvax
