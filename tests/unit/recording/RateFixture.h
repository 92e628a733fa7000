#pragma once

#include "recording/RateRecorder.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LinesPrinting.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RunFolder.h"

namespace test {

using RatesRecord = std::unique_ptr<KorvaxPayload_RateCounters>;

/// Channel c counts `first` + c everywhere.
inline RatesRecord Rates(quint32 channels, int first, quint64 timestamp = 0) {
  auto rates = std::make_unique<KorvaxPayload_RateCounters>(channels);
  rates->timestamp = timestamp;
  for (quint32 c = 0; c < channels; ++c) {
    rates->ratesIn[c] = rates->ratesOut[c] = first + static_cast<double>(c);
    rates->countersIn[c] = rates->countersOut[c] = static_cast<quint64>(first) + c;
  }
  return rates;
}

/// Two channels whose values are all different and show how each is written.
inline RatesRecord SpeakingRates() {
  auto rates = std::make_unique<KorvaxPayload_RateCounters>(2);
  rates->timestamp = 99;
  rates->ratesIn = {1.5, 1234567.0};
  rates->countersIn = {0x1'0000'0002, 3};
  rates->ratesOut = {0.1, 2.0};
  rates->countersOut = {4, 0xFFFF'FFFF'FFFF'FFFF};
  rates->startRatesIn = {0.25, 1e-7};
  rates->startRatesOut = {100000.0, 1e6};
  return rates;
}

/// A recorder named "rates" that records to the folder of run_1, by a clock that the test moves.
class RateBench {
public:
  explicit RateBench(const QString& fileType)
      : control(input_, {.fileType = fileType, .filePath = folder.Root(), .runId = "run_1"}) {}

  void Start() { control.SetStatus(korvax::DumpStatus::Recording); }
  void Pause() { control.SetStatus(korvax::DumpStatus::Paused); }
  void Stop() { control.SetStatus(korvax::DumpStatus::Stopped); }
  void SetRunId(const QString& runId) {
    control.Set([&](korvax::DumpSettings& settings) { settings.runId = runId; });
  }
  void SetFileType(const QString& type) {
    control.Set([&](korvax::DumpSettings& settings) { settings.fileType = type; });
  }

  /// One container of one record, or of `count` equal ones.
  void Take(const RatesRecord& record, std::size_t count = 1) {
    const korvax::RateHistory::Record shared(korvax::RateHistory::Record(), record.get());  // owns nothing
    recorder.Take(std::vector(count, shared));
  }

  /// The line on a file of the run that is emptied.
  QString Reuse(const QString& file, int records) const {
    return QStringLiteral("Run file \"%1\" is used again: its %2 records are given up")
        .arg(folder.Path(file))
        .arg(records);
  }

  RunFolder folder;

private:
  PinInput input_{"rate_counters"};

public:
  korvax::DumpControl control;
  FakeClock clock;
  korvax::RateRecorder recorder{"rates", control, clock};
};

}  // namespace test
