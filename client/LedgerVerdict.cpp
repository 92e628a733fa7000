#include "client/LedgerVerdict.h"

#include "client/TextFit.h"

#include <algorithm>
#include <array>

namespace korvax::client {

namespace {

struct LossWords {
  const char* fate;
  const char* words;
};

constexpr std::array<LossWords, 4> lossWords{{{"refused", "%1 refused %2"},
                                              {"dropped", "%1 dropped %2 at a full buffer"},
                                              {"not_written", "%1 could not write %2"},
                                              {"overwritten", "%1 wrote over %2"}}};

/// Null where the fate is no loss.
const LossWords* WordsOf(const QString& fate) {
  const auto found =
      std::ranges::find_if(lossWords, [&fate](const LossWords& each) { return fate == QLatin1String(each.fate); });
  return found == lossWords.end() ? nullptr : found;
}

/// Goes through the blocks of an account.
class Judgement {
public:
  explicit Judgement(LedgerSpan span) : span_(span) {}

  LedgerVerdict Of(const Ledger& ledger) {
    for (const LedgerBlock& block : ledger.blocks) {
      name_ = Harmless(block.name);
      JudgeRecords(block);
      JudgeHand(NotBooked(block), "%1 received %2 more than it took");
      for (const LedgerOutput& output : block.outputs) {
        JudgeOutput(block, output);
      }
    }
    if (ledger.balanced == false && verdict_.Settled()) {
      verdict_.imbalances << QStringLiteral("the server says so, its figures don't");
    }
    return verdict_;
  }

private:
  void JudgeRecords(const LedgerBlock& block) {
    const Figure missing = Missing(block);
    ExpectNone(missing, "%1 misses %2", "%1 accounts for %2 too many");
    if (block.missing && missing && *block.missing != *missing) {
      verdict_.imbalances << QStringLiteral("%1 tells of %2 missing, its figures of %3")
                                 .arg(name_, QString::number(*block.missing), QString::number(*missing));
    }
    for (const auto& [fate, records] : block.became) {
      if (const LossWords* loss = WordsOf(fate)) {
        AddLoss(records, loss->words);
      }
    }
  }

  void JudgeOutput(const LedgerBlock& block, const LedgerOutput& output) {
    JudgeHand(NotPushed(block, output), "%1 pushed %2 more than it made");
    ExpectNone(Vanished(output), "the queue behind %1 lost %2 without a word",
               "the queue behind %1 gave out %2 too many");
    AddLoss(output.dropped, "%1 dropped %2 at a full queue");
  }

  /// `less` is what to say when there are less than none where that can't be.
  void JudgeHand(Figure records, const char* less) {
    if (records > 0) {
      verdict_.inHand += static_cast<quint64>(*records);
    } else if (records && *records < 0 && span_ == LedgerSpan::Run) {
      verdict_.heldBefore += 0 - static_cast<quint64>(*records);
    } else {
      ExpectNone(records, "", less);
    }
  }

  /// Each is what to say when there are some, more or less than none.
  void ExpectNone(Figure records, const char* more, const char* less) {
    if (!records) {
      verdict_.readable = false;
    } else if (*records != 0) {
      const auto count = static_cast<quint64>(*records);
      const quint64 magnitude = *records > 0 ? count : 0 - count;
      verdict_.imbalances << QString(QLatin1String(*records > 0 ? more : less))
                                 .arg(name_, Counted(magnitude, QStringLiteral("record")));
    }
  }

  void AddLoss(Figure records, const char* words) {
    if (records > 0) {
      verdict_.lost += static_cast<quint64>(*records);
      verdict_.losses << QString(QLatin1String(words)).arg(name_, QString::number(*records));
    }
  }

  const LedgerSpan span_;
  LedgerVerdict verdict_;
  QString name_;
};

QString BalanceText(const LedgerVerdict& verdict) {
  if (!verdict.Balanced()) {
    return QStringLiteral("Not balanced: %1.").arg(verdict.imbalances.join(QStringLiteral("; ")));
  }
  return verdict.readable ? QStringLiteral("Balanced.") : QStringLiteral("Balanced as far as it can be read.");
}

QString LossText(const LedgerVerdict& verdict) {
  if (verdict.losses.isEmpty()) {
    return QStringLiteral("Nothing is lost.");
  }
  return QStringLiteral("%1 lost: %2.")
      .arg(Counted(verdict.lost, QStringLiteral("record")), verdict.losses.join(QStringLiteral("; ")));
}

}  // namespace

LedgerVerdict Judge(const Ledger& ledger, LedgerSpan span) {
  return Judgement(span).Of(ledger);
}

QString InWords(const LedgerVerdict& verdict) {
  QStringList sentences{BalanceText(verdict)};
  if (verdict.inHand > 0) {
    sentences << QStringLiteral("In hand: %1.").arg(verdict.inHand);
  }
  if (verdict.heldBefore > 0) {
    sentences << QStringLiteral("In hand at the beginning: %1.").arg(verdict.heldBefore);
  }
  sentences << LossText(verdict);
  return sentences.join(QLatin1Char(' '));
}

bool IsLoss(const QString& fate) {
  return WordsOf(fate) != nullptr;
}

Figure Missing(const LedgerBlock& block) {
  Figure accounted = block.waiting;
  for (const auto& [fate, records] : block.became) {
    accounted = Sum(accounted, records);
  }
  return Difference(block.received, accounted);
}

Figure NotBooked(const LedgerBlock& block) {
  Figure taken = 0;
  for (const LedgerInput& input : block.inputs) {
    taken = Sum(taken, input.taken);
  }
  return block.inputs.empty() ? 0 : Difference(taken, block.received);
}

Figure NotPushed(const LedgerBlock& block, const LedgerOutput& output) {
  return Difference(block.made, Sum(output.pushed, output.dropped));
}

Figure Vanished(const LedgerOutput& output) {
  return Difference(output.pushed, Sum(output.taken, output.waiting));
}

}  // namespace korvax::client
