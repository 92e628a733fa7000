#include "configuration/BindingCheck.h"

#include "configuration/Words.h"

#include <QJsonArray>

namespace korvax {

namespace {

QStringList NamesOf(const std::vector<BoardEntry>& boards) {
  QStringList names;
  for (const BoardEntry& board : boards) {
    names << board.name;
  }
  return names;
}

// Null, and a finding, where there is no such board. A value that is no text is the schema's business.
const BoardEntry* FindBoard(const Layout& layout, const QJsonObject& entry, const QStringList& path,
                            FindingList& findings) {
  const QJsonValue source = entry["source"];
  const BoardEntry* const board = source.isString() ? layout.Board(source.toString()) : nullptr;
  if (board == nullptr && source.isString()) {
    findings.Warn(path + QStringList{"source"}, QStringLiteral("the name of an enabled board"),
                  ValueText(source) + Suggestion(source.toString(), NamesOf(layout.boards)));
  }
  return board;
}

void CheckEndpoint(const BoardEntry& board, const QString& pin, const QStringList& path, FindingList& findings) {
  QStringList names;
  for (const QJsonValue& value : board.keys["endpoints"].toArray()) {
    const QJsonObject endpoint = value.toObject();
    names << QStringLiteral("endpoints\\") + endpoint["name"].toString();
    if (names.last() != pin) {
      continue;
    }
    if (!endpoint["enable"].toBool()) {
      findings.Warn(path, QStringLiteral("an enabled endpoint, as others are never started"),
                    Quoted(pin) + QStringLiteral(", which isn't"));
    }
    return;
  }
  findings.Warn(path, QStringLiteral("\"endpoints\\\\\" and the name of an endpoint of ") + Quoted(board.name),
                Quoted(pin) + Suggestion(pin, names));
}

void CheckSource(const Layout& layout, const BlockEntry& block, FindingList& findings) {
  const int inputCount = block.keys["input_count"].toInt();
  if (inputCount > 0) {
    findings.Warn(block.path + QStringList{"input_count"}, QStringLiteral("0, as a source has no input pins"),
                  QString::number(inputCount));
  }
  const QJsonArray entries = block.keys["sources"].toArray();
  for (int i = 0; i < entries.size(); ++i) {
    const QStringList path = block.path + QStringList{"sources", QString::number(i)};
    const QJsonObject entry = entries[i].toObject();
    const BoardEntry* const board = FindBoard(layout, entry, path, findings);
    const QString pin = entry["pin"].toString();
    // Another form is against the schema.
    if (board != nullptr && pin.startsWith(QLatin1String("endpoints\\")) && pin.count(QLatin1Char('\\')) == 1) {
      CheckEndpoint(*board, pin, path + QStringList{"pin"}, findings);
    }
  }
}

void CheckHv(const Layout& layout, const BlockEntry& block, FindingList& findings) {
  const QJsonArray entries = block.keys["sources"].toArray();
  for (int i = 0; i < entries.size(); ++i) {
    FindBoard(layout, entries[i].toObject(), block.path + QStringList{"sources", QString::number(i)}, findings);
  }
}

}  // namespace

void CheckBindings(const Layout& layout, FindingList& findings) {
  for (const BlockEntry& block : layout.blocks) {
    const bool isSource = block.type == QLatin1String("source");
    if (!isSource && block.type != QLatin1String("hv")) {
      continue;
    }
    const QJsonValue sources = block.keys["sources"];
    if (sources.isUndefined() || (sources.isArray() && sources.toArray().isEmpty())) {
      findings.Warn(block.path + QStringList{"sources"},
                    isSource ? QStringLiteral("a board and its endpoint") : QStringLiteral("a board"),
                    ValueText(sources));
    }
    isSource ? CheckSource(layout, block, findings) : CheckHv(layout, block, findings);
  }
}

}  // namespace korvax
