#include "recording/DumpControl.h"

#include <utility>

namespace korvax {

namespace {

QString OwnText(const QString& text) {
  return QString(text.constData(), text.size());
}

// The worker shares no text with the main thread: the share that ends last would free what the other has used,
// ordered by nothing but a counter inside Qt, which the thread sanitizer can't see.
DumpSettings OwnSettings(const DumpSettings& settings) {
  return {settings.eventsPerFile, settings.dumpTime, OwnText(settings.fileType), OwnText(settings.filePath),
          OwnText(settings.runId)};
}

}  // namespace

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

DumpOrder DumpControl::TakeOrder(quint64 records) {
  const Lock lock(mutex_);
  ++ordersTaken_;
  CountUnrecorded(records);
  return {order_.status,
          std::exchange(order_.begun, false),
          failing_,
          std::exchange(order_.stopped, false),
          order_.runs,
          order_.stops,
          OwnSettings(order_.settings)};
}

void DumpControl::CountUnrecorded(quint64 records) {
  if (order_.status == DumpStatus::Paused) {
    counts_.discarded += records;
  } else if (order_.status == DumpStatus::Stopped && failing_) {
    counts_.failed += records;
  } else if (order_.status == DumpStatus::Stopped && waitingAtStop_ > 0) {
    --waitingAtStop_;
    counts_.discarded += records;
  }
}

void DumpControl::StopAfterFailure(const DumpOrder& order) {
  const Lock lock(mutex_);
  if (order.runs == order_.runs && order.stops == order_.stops) {
    ChangeStatus(DumpStatus::Stopped);
    failing_ = true;
  }
}

void DumpControl::BeginRun() {
  ChangeStatus(DumpStatus::Recording);
  ++order_.runs;
  order_.begun = true;
  counts_ = {};
  droppedMark_ = input_.DroppedRecords();
}

void DumpControl::ChangeStatus(DumpStatus status) {
  const bool wasStopped = order_.status == DumpStatus::Stopped;
  const bool isStopped = status == DumpStatus::Stopped;
  const quint64 dropped = input_.DroppedRecords();
  if (wasStopped) {
    droppedMark_ = dropped;
  }
  if (isStopped) {
    ++order_.stops;
    order_.stopped = true;
    counts_.dropped += dropped - droppedMark_;
    waitingAtStop_ = wasStopped && !failing_ ? waitingAtStop_ : WaitingMessages();
  }
  failing_ = false;
  order_.status = status;
}

// Those in the pin, and the one that the worker has taken from it but not yet its order for.
int DumpControl::WaitingMessages() const {
  const int level = input_.Level();
  const bool isOneInHand = static_cast<qint64>(input_.AcceptedMessages()) - ordersTaken_ > level;
  return level + (isOneInHand ? 1 : 0);
}

void DumpControl::Add(const DumpCounts& counts) {
  counts_.recorded += counts.recorded;
  counts_.discarded += counts.discarded;
  counts_.failed += counts.failed;
  counts_.overwritten += counts.overwritten;
}

}  // namespace korvax
