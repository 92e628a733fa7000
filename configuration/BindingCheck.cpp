#include "configuration/BindingCheck.h"

#include "configuration/Words.h"

#include <QHash>
#include <QJsonArray>

namespace korvax {

namespace {

/// The endpoints of a board as sources name them.
struct EndpointPins {
  QStringList names;
  QHash<QString, bool> enabled;  // of the first of each name

  explicit EndpointPins(const BoardEntry& board) {
    const QJsonArray endpoints = board.keys["endpoints"].toArray();
    for (const QJsonValue& value : endpoints) {
      const QJsonObject endpoint = value.toObject();
      names << QStringLiteral("endpoints\\") + endpoint["name"].toString();
      if (!enabled.contains(names.last())) {
        enabled.insert(names.last(), endpoint["enable"].toBool());
      }
    }
  }
};

class BindingCheck {
public:
  BindingCheck(const Layout& layout, FindingList& findings) : findings_(findings) {
    for (const BoardEntry& board : layout.boards) {
      names_ << board.name;
      if (!boards_.contains(board.name)) {
        boards_.insert(board.name, {&board, EndpointPins(board)});
      }
    }
  }

  void CheckSource(const BlockEntry& block) const;
  void CheckHv(const BlockEntry& block) const;

private:
  struct Board {
    const BoardEntry* entry;
    EndpointPins pins;
  };

  const Board* FindBoard(const QJsonObject& entry, const QStringList& path) const;
  void CheckEndpoint(const Board& board, const QString& pin, const QStringList& path) const;

  FindingList& findings_;
  QStringList names_;             // of all boards
  QHash<QString, Board> boards_;  // the first of each name
};

// Null, and a finding, where there is no such board. A value that is no text is the schema's business.
const BindingCheck::Board* BindingCheck::FindBoard(const QJsonObject& entry, const QStringList& path) const {
  const QJsonValue source = entry["source"];
  const auto board = boards_.constFind(source.toString());
  if (source.isString() && board == boards_.constEnd()) {
    findings_.Warn(path + QStringList{"source"}, QStringLiteral("the name of an enabled board"),
                   [&] { return ValueText(source) + Suggestion(source.toString(), names_); });
  }
  return source.isString() && board != boards_.constEnd() ? &*board : nullptr;
}

void BindingCheck::CheckEndpoint(const Board& board, const QString& pin, const QStringList& path) const {
  const auto enabled = board.pins.enabled.constFind(pin);
  if (enabled == board.pins.enabled.constEnd()) {
    findings_.Warn(path,
                   QStringLiteral("\"endpoints\\\\\" and the name of an endpoint of ") + Quoted(board.entry->name),
                   [&] { return Quoted(pin) + Suggestion(pin, board.pins.names); });
  } else if (!*enabled) {
    findings_.Warn(path, QStringLiteral("an enabled endpoint, as others are never started"),
                   Quoted(pin) + QStringLiteral(", which isn't"));
  }
}

void BindingCheck::CheckSource(const BlockEntry& block) const {
  const int inputCount = block.keys["input_count"].toInt();
  if (inputCount > 0) {
    findings_.Warn(block.path + QStringList{"input_count"}, QStringLiteral("0, as a source has no input pins"),
                   QString::number(inputCount));
  }
  const QJsonArray entries = block.keys["sources"].toArray();
  for (int i = 0; i < entries.size(); ++i) {
    const QStringList path = block.path + QStringList{"sources", QString::number(i)};
    const QJsonObject entry = entries[i].toObject();
    const Board* const board = FindBoard(entry, path);
    const QString pin = entry["pin"].toString();
    // Another form is against the schema.
    if (board != nullptr && pin.startsWith(QLatin1String("endpoints\\")) && pin.count(QLatin1Char('\\')) == 1) {
      CheckEndpoint(*board, pin, path + QStringList{"pin"});
    }
  }
}

void BindingCheck::CheckHv(const BlockEntry& block) const {
  const QJsonArray entries = block.keys["sources"].toArray();
  for (int i = 0; i < entries.size(); ++i) {
    FindBoard(entries[i].toObject(), block.path + QStringList{"sources", QString::number(i)});
  }
}

}  // namespace

void CheckBindings(const Layout& layout, FindingList& findings) {
  const BindingCheck check(layout, findings);
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
    if (isSource) {
      check.CheckSource(block);
    } else {
      check.CheckHv(block);
    }
  }
}

}  // namespace korvax
