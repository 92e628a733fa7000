#include "recording/DumpControl.h"

namespace korvax {

DumpControl::DumpControl(const PinInput& input, DumpSettings initial) : input_(input) {
  order_.settings = std::move(initial);
}

DumpStatus DumpControl::Status() const {
  const Lock lock(mutex_);
  return order_.status;
}

DumpSettings DumpControl::Settings() const {
  const Lock lock(mutex_);
  return order_.settings;
}

DumpCounts DumpControl::Counts() const {
  const Lock lock(mutex_);
  DumpCounts counts = counts_;
  if (order_.status != DumpStatus::Stopped) {
    counts.dropped += input_.DroppedRecords() - droppedMark_;
  }
  return counts;
}

void DumpControl::SetStatus(DumpStatus status) {
  const Lock lock(mutex_);
  ChangeStatus(status);
}

DumpOrder DumpControl::Order() const {
  const Lock lock(mutex_);
  return order_;
}

void DumpControl::StopAfterFailure(const DumpOrder& order) {
  const Lock lock(mutex_);
  if (order.runs == order_.runs) {
    ChangeStatus(DumpStatus::Stopped);
  }
}

void DumpControl::BeginRun(const QString& runId) {
  order_.settings.runId = runId;
  ChangeStatus(DumpStatus::Recording);
  ++order_.runs;
  counts_ = {};
  droppedMark_ = input_.DroppedRecords();
}

void DumpControl::ChangeStatus(DumpStatus status) {
  const quint64 dropped = input_.DroppedRecords();
  if (order_.status == DumpStatus::Stopped) {
    droppedMark_ = dropped;
  }
  if (status == DumpStatus::Stopped) {
    ++order_.stops;
    counts_.dropped += dropped - droppedMark_;
    droppedMark_ = dropped;
  }
  order_.status = status;
}

void DumpControl::Add(const DumpCounts& counts) {
  counts_.recorded += counts.recorded;
  counts_.discarded += counts.discarded;
  counts_.failed += counts.failed;
  counts_.overwritten += counts.overwritten;
}

}  // namespace korvax
