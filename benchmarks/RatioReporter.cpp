#include "benchmarks/RatioReporter.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    const auto items = run.counters.find("items_per_second");
    if (run.run_type != Run::RT_Iteration || items == run.counters.end()) {
      continue;
    }
    const double ns = 1e9 / items->second.value;
    const std::string& name = run.run_name.function_name;
    const std::string& size = run.run_name.args;
    const auto [best, isNew] = bestNsPerEvent_.try_emplace(size.empty() ? name : name + "/" + size, ns);
    best->second = std::min(best->second, ns);
  }
}

void RatioReporter::Finalize() {
  const auto bare = bestNsPerEvent_.find("BareLoop");
  if (bare == bestNsPerEvent_.end()) {
    return;
  }
  std::printf("\nCPU an event, best of the repetitions\n%-24s %10s %16s\n", "", "ns", "x bare loop");
  for (const auto& [name, ns] : bestNsPerEvent_) {
    std::printf("%-24s %10.2f %16.2f\n", name.c_str(), ns, ns / bare->second);
  }
}

}  // namespace bench
