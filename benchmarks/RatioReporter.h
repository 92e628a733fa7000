#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace bench {

/// Prints the usual table and, at the end, each figure as CPU time an event and as a multiple of the benchmark
/// named "BareLoop", both measured in the same run. Events come from SetItemsProcessed.
class RatioReporter : public benchmark::ConsoleReporter {
public:
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

private:
  std::map<std::string, double> bestNsPerEvent_;
};

}  // namespace bench
