#include "configuration/LinkCheck.h"

#include "configuration/BlockPins.h"
#include "configuration/Words.h"

#include <QJsonArray>

#include <algorithm>

namespace korvax {

namespace {

// Nothing for a type that isn't known, as then nothing can be said about its pins.
std::optional<int> OutputPins(const BlockEntry& block) {
  const BlockPins* const pins = PinsOf(block.type);
  if (pins == nullptr) {
    return std::nullopt;
  }
  return pins->outputs == BlockPins::ByOutputCount ? block.keys["output_count"].toInt() : pins->outputs;
}

QString QuotedList(const QStringList& texts) {
  QStringList quoted;
  for (const QString& text : texts) {
    quoted << Quoted(text);
  }
  return quoted.join(QStringLiteral(" or "));
}

}  // namespace

void LinkCheck::Check() {
  streams_.resize(layout_.blocks.size());
  readers_.resize(layout_.blocks.size());
  for (const BlockEntry& block : layout_.blocks) {
    allNames_.insert(block.name);
  }
  for (std::size_t i = 0; i < layout_.blocks.size(); ++i) {
    const BlockEntry& block = layout_.blocks[i];
    if (block.type == QLatin1String("source")) {
      streams_[i] = {block.keys["data_type"].toString(), block.name, {}};
    } else if (const BlockPins* const pins = PinsOf(block.type)) {
      CheckInputs(i, pins->inputs);
    }
    CheckName(i);
  }
  for (std::size_t i = 0; i < layout_.blocks.size(); ++i) {
    CheckUnread(i);
  }
}

void LinkCheck::CheckName(std::size_t block) {
  const BlockEntry& entry = layout_.blocks[block];
  if (entry.name.isEmpty()) {
    return;
  }
  CheckReach(entry);
  if (!firsts_.contains(entry.name)) {
    firsts_.insert(entry.name, block);
    earlierNames_ << entry.name;
    return;
  }
  findings_.Warn(
      entry.path + QStringList{"name"},
      QStringLiteral("a name that no other block has, as sources of later blocks find the first one only"),
      Quoted(entry.name) + QStringLiteral(", which is also the name of an earlier block"));
}

// The route of a query is a block's name, and the first block of that name gets it.
void LinkCheck::CheckReach(const BlockEntry& block) const {
  const QStringList path = block.path + QStringList{"name"};
  if (block.name == QLatin1String("commands")) {
    findings_.Fail(path,
                   QStringLiteral("another name, as this is the one of run control, and no run could be started"),
                   Quoted(block.name));
  } else if (block.name == QLatin1String("query_by_json")) {
    findings_.Warn(path, QStringLiteral("another name, as clients can't reach a block by this one"),
                   Quoted(block.name));
  } else if (block.name.contains(QLatin1Char('/'))) {
    findings_.Warn(path,
                   QStringLiteral("a name without \"/\", as clients can't reach the block by it, and in the paths "
                                  "of recorded files it means a folder"),
                   Quoted(block.name));
  }
}

void LinkCheck::CheckInputs(std::size_t block, int pins) {
  const BlockEntry& entry = layout_.blocks[block];
  if (!CheckInputCount(entry, pins)) {
    return;
  }
  const QJsonArray sources = entry.keys["sources"].toArray();
  const int count = entry.keys["input_count"].toInt();
  for (int i = 0; i < count; ++i) {
    CheckLink(block, entry.path + QStringList{"sources", QString::number(i)}, sources[i].toObject());
  }
}

// False where links can't be looked at.
bool LinkCheck::CheckInputCount(const BlockEntry& block, int pins) const {
  const QJsonValue count = block.keys["input_count"];
  const int sources = block.keys["sources"].toArray().size();
  const QStringList path = block.path + QStringList{"input_count"};
  if (count.toInt() > std::min(pins, sources)) {
    findings_.Fail(path,
                   QStringLiteral("at most %1, as the block has %2 input pins and \"sources\" %3 entries")
                       .arg(std::min(pins, sources))
                       .arg(pins)
                       .arg(sources),
                   ValueText(count));
    return false;
  }
  if (count.toInt() == 0 && pins > 0 && (count.isUndefined() || count.toInt(1) == 0)) {
    findings_.Warn(path, QStringLiteral("1, as with 0 the block gets no data"), ValueText(count));
  }
  return true;
}

void LinkCheck::CheckLink(std::size_t block, const QStringList& path, const QJsonObject& source) {
  const auto upstream = FindUpstream(path, source["source"].toString());
  if (!upstream) {
    return;
  }
  // What isn't a number, or no text, reads as pin 0.
  const int pin = source["pin"].toString().toInt();
  const BlockEntry& feeder = layout_.blocks[*upstream];
  const std::optional<int> pins = OutputPins(feeder);
  if (pins && (pin < 0 || pin >= *pins)) {
    findings_.Fail(
        path + QStringList{"pin"},
        QStringLiteral("one of the %1 output pins of %2, counted from 0").arg(*pins).arg(Quoted(feeder.name)),
        ValueText(source["pin"]));
    return;
  }
  TakeFeed(block, *upstream, pin, path);
}

std::optional<std::size_t> LinkCheck::FindUpstream(const QStringList& path, const QString& name) const {
  const auto found = firsts_.constFind(name);
  if (found != firsts_.constEnd()) {
    return *found;
  }
  findings_.Fail(
      path + QStringList{"source"}, QStringLiteral("the name of a block that stands earlier in the file"), [&] {
        return Quoted(name) + (allNames_.contains(name) ? QStringLiteral(", which doesn't stand earlier")
                                                        : Suggestion(name, earlierNames_));
      });
  return std::nullopt;
}

void LinkCheck::TakeFeed(std::size_t block, std::size_t upstream, int pin, const QStringList& path) {
  const BlockEntry& entry = layout_.blocks[block];
  const BlockEntry& feeder = layout_.blocks[upstream];
  const BlockEntry* const other = readers_[upstream].value(pin);
  if (other != nullptr) {
    findings_.Warn(path,
                   QStringLiteral("an output pin that no other block reads, as each message reaches only one"),
                   QStringLiteral("pin %1 of %2, which also feeds %3")
                       .arg(QString::number(pin), Quoted(feeder.name), Quoted(other->name)));
  } else {
    readers_[upstream].insert(pin, &entry);
  }
  Stream stream = streams_[upstream];
  CheckData(entry, stream, path);
  if (entry.type == QLatin1String("tee")) {
    stream.tee = entry.name;
  }
  streams_[block] = stream;
}

void LinkCheck::CheckData(const BlockEntry& block, const Stream& stream, const QStringList& path) const {
  const QStringList taken = PinsOf(block.type)->taken;
  if (!taken.isEmpty() && !stream.dataType.isEmpty() && !taken.contains(stream.dataType)) {
    findings_.Warn(path, QStringLiteral("data of the type ") + QuotedList(taken),
                   QStringLiteral("%1, from %2").arg(Quoted(stream.dataType), Quoted(stream.source)));
  } else if (block.type == QLatin1String("oscilloscope") && !stream.tee.isEmpty()) {
    findings_.Warn(path, QStringLiteral("waveforms that no tee has copied, as copies show nothing"),
                   QStringLiteral("those of the tee ") + Quoted(stream.tee));
  }
}

void LinkCheck::CheckUnread(std::size_t block) const {
  constexpr int mostNamed = 5;
  const int pins = OutputPins(layout_.blocks[block]).value_or(0);
  QStringList unread;
  for (int pin = 0; pin < pins && unread.size() <= mostNamed; ++pin) {
    if (!readers_[block].contains(pin)) {
      unread << (unread.size() < mostNamed ? QString::number(pin) : QString(QChar(0x2026)));
    }
  }
  if (!unread.isEmpty()) {
    const QString word = unread.size() > 1 ? QStringLiteral("pins ") : QStringLiteral("pin ");
    findings_.Warn(layout_.blocks[block].path,
                   QStringLiteral("a block that reads output ") + word + unread.join(QStringLiteral(", ")),
                   QStringLiteral("none"));
  }
}

}  // namespace korvax
