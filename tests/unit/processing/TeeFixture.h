#pragma once

#include "processing/Process_Tee.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/unit/processing/Events.h"

#include <gtest/gtest.h>

namespace test {

inline ChainContext TeeContext() {
  ChainContext context;
  context.fullPath = "processing/0/filter_chain/main/chain/tee";
  return context;
}

/// A real tee between a pin of the test and one reader per output. It works within Push, as everything here is on
/// one thread.
class Tee {
public:
  /// `outputCount`: the value of "output_count" as JSON.
  explicit Tee(const QByteArray& outputCount)
      : block(nullptr, TeeContext(),
              Object(R"({"name":"tee","data_type":"energy","output_count":)" + outputCount + "}")) {
    block.Inputs().front()->Connect(&feed);
    for (const auto& output : block.Outputs()) {
      readers.push_back(std::make_unique<PinInput>("energy"));
      readers.back()->Connect(output.get());
    }
  }

  ~Tee() {
    Empty(*block.Inputs().front());
    for (const auto& reader : readers) {
      Empty(*reader);
    }
  }
  Tee(const Tee&) = delete;
  Tee& operator=(const Tee&) = delete;

  /// The oldest message of an output; one without a batch when there is none.
  DataMessage Next(std::size_t output) {
    DataMessage message;
    readers.at(output)->Pop(message);
    return message;
  }
  /// The timestamps of all energy events that wait at an output; takes them.
  std::vector<quint64> Timestamps(std::size_t output) {
    std::vector<quint64> timestamps;
    for (DataMessage message = Next(output); message.batch != nullptr; message = Next(output)) {
      korvax::ForEachEvent(*message.batch,
                           [&](const KorvaxPayload_Energy& event) { timestamps.push_back(event.timestamp); });
    }
    return timestamps;
  }

  PinOutput feed{"energy"};
  Process_Tee block;
  std::vector<std::unique_ptr<PinInput>> readers;
};

}  // namespace test
