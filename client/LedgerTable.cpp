#include "client/LedgerTable.h"

#include "client/Alarm.h"
#include "client/Table.h"
#include "client/TextFit.h"

namespace korvax::client {

namespace {

constexpr int receivedColumn = 2;
constexpr int pushedColumn = 5;
constexpr int droppedColumn = 6;
const QString none = QStringLiteral("-");

QString FigureText(Figure figure) {
  return figure ? QString::number(*figure) : QStringLiteral("?");
}

/// One figure of all outputs.
QString OutputsText(const LedgerBlock& block, Figure LedgerOutput::*figure) {
  QStringList texts;
  for (const LedgerOutput& output : block.outputs) {
    texts << FigureText(output.*figure);
  }
  return texts.isEmpty() ? none : texts.join(QLatin1Char('+'));
}

/// The output that an input is linked to; null where that can't be told.
const LedgerOutput* OutputBefore(const LedgerInput& input, const Ledger& ledger) {
  const LedgerOutput* found = nullptr;
  for (const LedgerBlock& block : ledger.blocks) {
    if (block.name == input.from && input.pin >= 0 && static_cast<quint64>(input.pin) < block.outputs.size()) {
      if (found != nullptr) {
        return nullptr;  // two blocks of this name
      }
      found = &block.outputs[static_cast<std::size_t>(input.pin)];
    }
  }
  return found;
}

Figure Waiting(const LedgerBlock& block, const Ledger& ledger) {
  Figure waiting = block.waiting;
  for (const LedgerInput& input : block.inputs) {
    const LedgerOutput* before = OutputBefore(input, ledger);
    waiting = before != nullptr ? Sum(waiting, before->waiting) : waiting;
  }
  return waiting;
}

bool IsNegative(Figure figure) {
  return figure && *figure < 0;
}

QString FatesText(const LedgerBlock& block, bool coloured) {
  QStringList texts;
  for (const auto& [fate, records] : block.became) {
    if (records != 0) {
      const QString text = FigureText(records) + QLatin1Char(' ') + Harmless(fate);
      texts << (IsLoss(fate) ? Alarm(text, coloured) : text);
    }
  }
  const Figure missing = Missing(block);
  if (missing > 0) {
    texts << Alarm(FigureText(missing) + QStringLiteral(" missing"), coloured);
  } else if (IsNegative(missing)) {
    texts << Alarm(FigureText(Difference(0, missing)) + QStringLiteral(" too many"), coloured);
  }
  return texts.isEmpty() ? none : texts.join(QStringLiteral(", "));
}

/// Marks the figures of the block that was added last that tell of losses, or don't fit.
void MarkCells(const LedgerBlock& block, Table& table) {
  if (IsNegative(NotBooked(block))) {
    table.MarkCell(receivedColumn);
  }
  for (const LedgerOutput& output : block.outputs) {
    const Figure vanished = Vanished(output);
    if (IsNegative(NotPushed(block, output)) || IsNegative(vanished) || vanished > 0) {
      table.MarkCell(pushedColumn);
    }
    if (output.dropped > 0) {
      table.MarkCell(droppedColumn);
    }
  }
}

}  // namespace

QStringList LedgerLines(const Ledger& ledger, bool coloured) {
  Table table(
      {QStringLiteral("block"), QStringLiteral("type"), QStringLiteral("received"), QStringLiteral("waiting"),
       QStringLiteral("made"), QStringLiteral("pushed"), QStringLiteral("dropped")},
      2);
  QStringList fates{QStringLiteral("became")};
  for (const LedgerBlock& block : ledger.blocks) {
    table.Add({block.name, block.type, FigureText(block.received), FigureText(Waiting(block, ledger)),
               block.outputs.empty() ? none : FigureText(block.made), OutputsText(block, &LedgerOutput::pushed),
               OutputsText(block, &LedgerOutput::dropped)});
    MarkCells(block, table);
    fates << FatesText(block, coloured);
  }
  // The last column of the table stands right and is nowhere empty: all lines are of one width.
  QStringList lines = table.Lines(coloured);
  for (int line = 0; line < lines.size(); ++line) {
    lines[line] += QStringLiteral("  ") + fates[line];
  }
  return lines;
}

QString ClosingLine(const LedgerVerdict& verdict, bool coloured) {
  const bool isAlarm = !verdict.Balanced() || verdict.lost > 0;
  return isAlarm && coloured ? Alarm(InWords(verdict), true) : InWords(verdict);
}

}  // namespace korvax::client
