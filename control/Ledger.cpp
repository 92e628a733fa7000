#include "control/Ledger.h"

#include "framework/KorvaxBlock.h"

#include <QDateTime>
#include <QJsonArray>

#include <algorithm>
#include <map>

namespace korvax {

namespace {

// The account before the inputs, and the outputs before the account: each station only adds to what the one
// before it has booked.
Ledger::Entry EntryOf(const KorvaxBlock& block, const PinOrigins& origins) {
  Ledger::Entry entry{block.Name(), block.BlockType(), block.FullPath(), {}, {}, {}, {}, {}};
  for (const auto& output : block.Outputs()) {
    entry.outputs.push_back(output->Counts());
  }
  if (const Account* const account = block.Records()) {
    entry.account = account->Get();
    entry.possibleFates = account->PossibleFates();
  }
  for (const auto& input : block.Inputs()) {
    entry.inputs.push_back({origins.Of(*input), input->TakenRecords()});
  }
  return entry;
}

// Those that have pins.
std::vector<const KorvaxBlock*> StationsOf(const BlockList& blocks) {
  std::vector<const KorvaxBlock*> stations;
  for (const auto& block : blocks) {
    if (!block->Inputs().empty() || !block->Outputs().empty()) {
      stations.push_back(block.get());
    }
  }
  return stations;
}

// By pins and not by names, which blocks may share.
void NoteArrivals(const std::vector<const KorvaxBlock*>& stations, std::vector<Ledger::Entry>& entries) {
  std::map<const PinOutput*, quint64> taken;
  for (std::size_t i = 0; i < stations.size(); ++i) {
    for (std::size_t pin = 0; pin < stations[i]->Inputs().size(); ++pin) {
      taken[stations[i]->Inputs()[pin]->Upstream()] += entries[i].inputs[pin].taken;
    }
  }
  for (std::size_t i = 0; i < stations.size(); ++i) {
    for (const auto& output : stations[i]->Outputs()) {
      entries[i].arrived.push_back(taken[output.get()]);
    }
  }
}

// Negative for differences that fell below 0: fewer wait than did, or records were accounted for twice.
qint64 Number(quint64 modulo) {
  return static_cast<qint64>(modulo);
}

QJsonObject ToJson(const Ledger::Input& input) {
  return {{QStringLiteral("from"), input.from},
          {QStringLiteral("pin"), input.pin},
          {QStringLiteral("taken"), Number(input.taken)}};
}

QJsonObject ToJson(const PinCounts& output) {
  return {{QStringLiteral("pushed"), Number(output.pushed)},
          {QStringLiteral("dropped"), Number(output.dropped)},
          {QStringLiteral("taken"), Number(output.taken)},
          {QStringLiteral("waiting"), Number(output.waiting)}};
}

QJsonObject ToJson(const Ledger::Entry& entry);

template <typename List>
QJsonArray ToJsonArray(const List& list) {
  QJsonArray array;
  for (const auto& element : list) {
    array.append(ToJson(element));
  }
  return array;
}

QJsonObject ToJson(const Ledger::Entry& entry) {
  QJsonObject became;
  for (const Fate fate : entry.possibleFates) {
    became[QLatin1String(NameOf(fate))] = Number(entry.account.fates[fate]);
  }
  return {{QStringLiteral("name"), entry.name},
          {QStringLiteral("type"), entry.type},
          {QStringLiteral("path"), entry.path},
          {QStringLiteral("received"), Number(entry.account.received)},
          {QStringLiteral("waiting"), Number(entry.account.waiting)},
          {QStringLiteral("became"), became},
          {QStringLiteral("missing"), Number(entry.Missing())},
          {QStringLiteral("in_hand"), Number(entry.InHand())},
          {QStringLiteral("made"), Number(entry.account.made)},
          {QStringLiteral("inputs"), ToJsonArray(entry.inputs)},
          {QStringLiteral("outputs"), ToJsonArray(entry.outputs)}};
}

void Subtract(Ledger::Entry& entry, const Ledger::Entry& earlier) {
  entry.account.received -= earlier.account.received;
  entry.account.waiting -= earlier.account.waiting;
  entry.account.made -= earlier.account.made;
  entry.account.fates -= earlier.account.fates;
  for (std::size_t i = 0; i < entry.inputs.size(); ++i) {
    entry.inputs[i].taken -= earlier.inputs[i].taken;
  }
  for (std::size_t i = 0; i < entry.outputs.size(); ++i) {
    entry.outputs[i].pushed -= earlier.outputs[i].pushed;
    entry.outputs[i].dropped -= earlier.outputs[i].dropped;
    entry.outputs[i].taken -= earlier.outputs[i].taken;
    entry.outputs[i].waiting -= earlier.outputs[i].waiting;
    entry.arrived[i] -= earlier.arrived[i];
  }
}

}  // namespace

bool Ledger::Entry::HasPassedOn() const {
  const auto passesOn = [](Fate fate) { return fate == Fate::Copied || fate == Fate::Grouped; };
  return std::none_of(possibleFates.begin(), possibleFates.end(), passesOn) ||
         account.made == account.fates[Fate::Copied] + account.fates[Fate::Grouped];
}

bool Ledger::Entry::HasArrived() const {
  return std::equal(outputs.begin(), outputs.end(), arrived.begin(), arrived.end(),
                    [](const PinCounts& output, quint64 there) { return output.taken == there; });
}

quint64 Ledger::Entry::InHand() const {
  quint64 inHand = 0;
  if (!inputs.empty()) {
    inHand -= account.received;
  }
  for (const Input& input : inputs) {
    inHand += input.taken;
  }
  for (const PinCounts& output : outputs) {
    inHand += account.made - output.pushed - output.dropped;
  }
  return inHand;
}

// Against the stream: a block is read before those that it is fed by.
Ledger Ledger::Of(const BlockList& blocks) {
  const PinOrigins origins(blocks);
  const std::vector<const KorvaxBlock*> stations = StationsOf(blocks);
  Ledger ledger;
  for (auto station = stations.rbegin(); station != stations.rend(); ++station) {
    ledger.entries_.push_back(EntryOf(**station, origins));
  }
  std::reverse(ledger.entries_.begin(), ledger.entries_.end());
  NoteArrivals(stations, ledger.entries_);
  return ledger;
}

void Ledger::KeepOnly(const QString& name) {
  std::erase_if(entries_, [&](const Entry& entry) { return entry.name != name; });
}

bool Ledger::IsBalanced() const {
  return std::all_of(entries_.begin(), entries_.end(), [](const Entry& entry) {
    return entry.Missing() == 0 && entry.InHand() == 0 && entry.HasPassedOn() && entry.HasArrived();
  });
}

Ledger Ledger::Since(const Ledger& earlier) const {
  Ledger difference = *this;
  for (std::size_t i = 0; i < entries_.size() && i < earlier.entries_.size(); ++i) {
    Subtract(difference.entries_[i], earlier.entries_[i]);
  }
  return difference;
}

QJsonObject Ledger::ToJson() const {
  return {{QStringLiteral("time"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
          {QStringLiteral("blocks"), ToJsonArray(entries_)},
          {QStringLiteral("balanced"), IsBalanced()}};
}

}  // namespace korvax
