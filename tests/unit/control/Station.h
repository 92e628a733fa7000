#pragma once

#include "framework/KorvaxBlock.h"
#include "tests/support/Records.h"

/// A block with pins whose account the test keeps: what a block's worker would do is the test's to do, step by
/// step.
class Station : public KorvaxBlock {
public:
  Station(const QString& name, int inputs, int outputs, std::vector<korvax::Fate> fates)
      : KorvaxBlock("station", false, {nullptr, nullptr, "path/of/" + name, {}}, nullptr),
        account(std::move(fates)) {
    SetName(name);
    for (int i = 0; i < inputs; ++i) {
      AddInput();
    }
    for (int i = 0; i < outputs; ++i) {
      AddOutput();
    }
  }
  ~Station() override {
    for (const auto& output : Outputs()) {
      for (DataMessage message; output->Take(message);) {  // a pin doesn't destroy what it still holds
      }
    }
  }

  const korvax::Account* Records() const override { return &account; }

  void LinkTo(const Station& upstream, std::size_t output = 0, std::size_t input = 0) {
    Inputs().at(input)->Connect(upstream.Outputs().at(output).get());
  }
  bool Push(int records, std::size_t output = 0) {
    DataMessage message = test::MessageOf();
    message.batch->events.resize(static_cast<std::size_t>(records));
    return Outputs().at(output)->Push(std::move(message));
  }
  void Take(std::size_t input = 0) {
    DataMessage message;
    Inputs().at(input)->Pop(message);
  }
  void Book(quint64 received, korvax::Fate fate, quint64 records, quint64 waiting = 0) {
    korvax::Fates fates;
    fates[fate] = records;
    account.Book(received, fates, waiting);
  }

  korvax::Account account;
};
