#pragma once

#include "control/Ledger.h"
#include "recording/DataDumper.h"
#include "runfiles/ListFiles.h"
#include "sinks/Position.h"
#include "sinks/time_distribution.h"
#include "tests/chain/FilterChainFixture.h"
#include "tests/support/RunFolder.h"

namespace test {

/// A chain of real blocks that stands in a list, as in the server, with its ledger.
class LedgerFixture : public FilterChainFixture {
protected:
  using Fate = korvax::Fate;
  using Ledger = korvax::Ledger;

  ~LedgerFixture() override {
    Stop();
    for (const auto& block : chain) {
      for (const auto& output : block->Outputs()) {
        for (DataMessage message; output->Take(message);) {  // a pin that ends leaves alone what is queued
        }
      }
    }
    while (!chain.empty()) {
      chain.pop_back();
    }
  }

  template <typename Block>
  Block& Add(const char* name, std::unique_ptr<Block> block) {
    block->SetName(QLatin1String(name));
    Block& added = *block;
    chain.push_back(std::move(block));
    return added;
  }
  /// A dumper whose files bear its name.
  DataDumper& AddDumper(const char* name) {
    return Add(name, std::make_unique<DataDumper>(nullptr, Context(name),
                                                  QJsonObject{{"name", name}, {"data_type", "energy"}}));
  }
  void StartRun(DataDumper& dumper, const QString& run) const {
    dumper.StartRun({.eventsPerFile = 1'000'000, .fileType = "BIN", .filePath = folder.Root(), .runId = run});
  }

  /// As at the end of the process.
  void Stop() {
    for (const auto& block : chain) {
      block->StopWorker();
    }
  }
  void WakeAll() {
    for (const auto& block : chain) {
      for (const auto& input : block->Inputs()) {
        emit input->DataReady(0);  // a wake-up may be lost
      }
    }
  }

  Ledger Now() const { return Ledger::Of(chain); }
  static const Ledger::Entry& EntryOf(const Ledger& ledger, const char* name) {
    for (const Ledger::Entry& entry : ledger.Entries()) {
      if (entry.name == QLatin1String(name)) {
        return entry;
      }
    }
    throw std::out_of_range(name);
  }
  quint64 Became(const char* block, Fate fate) const { return EntryOf(Now(), block).account.fates[fate]; }
  quint64 Received(const char* block) const { return EntryOf(Now(), block).account.received; }

  /// Whether sorters have passed on what is due; a fixture with one says when.
  virtual bool IsSorted(const Ledger& /*ledger*/) const { return true; }
  /// No more wait inside a sorter than so many, and its groups are booked.
  static bool IsSorted(const Ledger& ledger, quint64 mostWaiting) {
    const korvax::Account::Statement& sorted = EntryOf(ledger, "sorter").account;
    return sorted.waiting <= mostWaiting && sorted.made == sorted.fates[Fate::Grouped];
  }
  /// Whether the block has taken all that was pushed to it, and nothing else waits there. One that the test has
  /// stalled needn't.
  static bool IsThrough(const Ledger& ledger, const Ledger::Entry& entry, const KorvaxBlock& block) {
    for (std::size_t i = 0; i < entry.inputs.size(); ++i) {
      const Ledger::Input& input = entry.inputs[i];
      const PinCounts& feed =
          EntryOf(ledger, qPrintable(input.from)).outputs.at(static_cast<std::size_t>(input.pin));
      if (!block.Inputs()[i]->signalsBlocked() && (feed.waiting != 0 || feed.taken != input.taken)) {
        return false;
      }
    }
    return true;
  }
  /// Nothing is on its way. The board is asked first: what it hands out later is not missed then.
  bool IsAtRest() const {
    if (!digitizer.IsExhausted()) {
      return false;
    }
    const Ledger ledger = Now();
    bool isThrough = ledger.IsBalanced() && IsSorted(ledger);
    for (std::size_t i = 0; i < chain.size(); ++i) {
      isThrough = isThrough && IsThrough(ledger, ledger.Entries().at(i), *chain[i]);
    }
    return isThrough;
  }
  /// Wakes all until then; `each` runs between.
  [[nodiscard]] bool Settle(const std::function<void()>& each = [] {}) {
    return WaitFor([&] {
      WakeAll();
      each();
      return IsAtRest();
    });
  }

  /// What holds at any moment.
  static void ExpectNothingMissing(const Ledger& ledger) {
    for (const Ledger::Entry& entry : ledger.Entries()) {
      EXPECT_EQ(entry.Missing(), 0U) << qPrintable(entry.name);
      EXPECT_GE(static_cast<qint64>(entry.InHand()), 0) << qPrintable(entry.name);
      for (const PinCounts& output : entry.outputs) {
        EXPECT_EQ(output.pushed, output.taken + output.waiting) << qPrintable(entry.name);
      }
    }
  }
  /// What holds at rest.
  static void ExpectBalanced(const Ledger& ledger) {
    ExpectNothingMissing(ledger);
    EXPECT_TRUE(ledger.IsBalanced());
    for (const Ledger::Entry& entry : ledger.Entries()) {
      for (const PinCounts& output : entry.outputs) {
        EXPECT_EQ(entry.account.made, output.pushed + output.dropped) << qPrintable(entry.name);
      }
      for (const Ledger::Input& input : entry.inputs) {
        EXPECT_EQ(entry.account.received, input.taken) << qPrintable(entry.name);
        EXPECT_EQ(EntryOf(ledger, input.from.toLatin1().constData())
                      .outputs.at(static_cast<std::size_t>(input.pin))
                      .taken,
                  input.taken)
            << qPrintable(entry.name);
      }
    }
  }

  /// Records in a file of a dumper, as its readers see them.
  quint64 RecordsIn(const QString& file) const {
    const auto reader =
        korvax::runfiles::OpenList(folder.Path(file).toStdString(), korvax::runfiles::Form::Binary);
    quint64 records = 0;
    for (korvax::runfiles::ListRecord record; reader->Next(record);) {
      ++records;
    }
    EXPECT_FALSE(reader->Fault()) << qPrintable(file);
    return records;
  }

  RunFolder folder;
  BlockList chain;
};

}  // namespace test
