#include "recording/ListRecorder.h"

#include <QtDebug>

#include <cerrno>
#include <utility>

namespace korvax {

namespace {

constexpr qint64 RatePeriodMs = 1000;

quint32 PayloadFormat(FileForm form) {
  switch (form) {
    case FileForm::Binary:
      return FormatBinary;
    case FileForm::Csv:
      return FormatCsv;
    case FileForm::Json:
      return FormatJson;
    case FileForm::Unknown:
      break;
  }
  return FormatJson + 1;  // records write nothing in it
}

}  // namespace

ListRecorder::ListRecorder(const QString& blockName, DumpControl& control, RunStatistics& statistics,
                           const Clock& clock)
    : blockName_(blockName),
      control_(control),
      statistics_(statistics),
      clock_(clock),
      runTimer_(clock),
      rateTimer_(clock) {}

void ListRecorder::Take(const PayloadBatch& batch) {
  const DumpOrder order = control_.Order();
  if (order.stops != stopsSeen_) {
    stopsSeen_ = order.stops;
    EndRun();
  }
  if (order.status == DumpStatus::Recording) {
    Record(batch, order);
  } else if (order.status == DumpStatus::Paused) {
    control_.Count(order, {.discarded = batch.records.size()});
  }
}

void ListRecorder::Finish() {
  EndRun();
}

void ListRecorder::EndRun() {
  file_.Close();
  fileIndex_ = 0;
  fileOpenNeeded_ = true;
  eventsInFile_ = 0;
}

void ListRecorder::Record(const PayloadBatch& batch, const DumpOrder& order) {
  const QString base = RunFileBase(order.settings, blockName_, fileIndex_);
  const FileForm form = FileFormOf(order.settings.fileType);
  const quint64 records = batch.records.size();
  qint64 events = 0;
  if (PrepareFile(base, order, form) && Append(batch, form, events)) {
    Report(base, order, records, events);
  } else {
    control_.Count(order, {.failed = records});
    control_.StopAfterFailure(order);
  }
}

bool ListRecorder::PrepareFile(const QString& base, const DumpOrder& order, FileForm form) {
  if (fileOpenNeeded_) {
    runTimer_.Start();
    rateTimer_.Start();
    statHeaderDue_ = true;
    if (!OpenFile(base, form)) {
      return false;
    }
  }
  return eventsInFile_ <= order.settings.eventsPerFile || RollOver(base, order, form);
}

// Kept: the file opened here has the name that was computed before the index went up, so that the first rollover
// empties the first file and goes on in it.
bool ListRecorder::RollOver(const QString& base, const DumpOrder& order, FileForm form) {
  const QString finished = file_.Path();
  file_.Close();
  ++fileIndex_;
  fileOpenNeeded_ = true;
  statHeaderDue_ = true;
  const quint64 recordsBefore = std::exchange(recordsInFile_, 0);
  if (!OpenFile(base, form)) {
    return false;
  }
  if (file_.Path() == finished) {
    qInfo() << "List file" << finished << "is used again: its" << recordsBefore << "events are given up";
    control_.Count(order, {.overwritten = recordsBefore});
  }
  eventsInFile_ = 0;
  return true;
}

bool ListRecorder::OpenFile(const QString& base, FileForm form) {
  const QString path = base + ExtensionOf(form);
  ByteWriter head;
  if (form == FileForm::Binary) {
    head.Text("KVXS").Decimal(clock_.SecondsSinceEpoch());
  }
  recordsInFile_ = 0;
  if (form != FileForm::Unknown && file_.Open(path, form, head.View())) {
    return true;
  }
  qInfo() << "Unable to open file " << path
          << " errno: " << (form == FileForm::Unknown ? qt_error_string(EINVAL) : file_.Problem())
          << ". Acquisition disabled in order to prevent software crash";
  return false;
}

bool ListRecorder::Append(const PayloadBatch& batch, FileForm form, qint64& events) {
  buffer_.Clear();
  for (const auto& record : batch.records) {
    if (form == FileForm::Json && !fileOpenNeeded_) {
      buffer_.Text(",\n");
    }
    record->Write(PayloadFormat(form), buffer_);
    events += record->count;
    fileOpenNeeded_ = false;
  }
  if (!file_.Write(buffer_.View())) {
    LogWriteFailure(file_);
    return false;
  }
  eventsInFile_ += events;
  recordsInFile_ += batch.records.size();
  return true;
}

void ListRecorder::Report(const QString& base, const DumpOrder& order, quint64 records, qint64 events) {
  StatLine line;
  line.runningTime = static_cast<double>(runTimer_.ElapsedMs()) / 1000.0;
  line.usedSpace = file_.Size();
  control_.Count(order, {.recorded = records}, [&] {
    statistics_.runningTime = line.runningTime;
    statistics_.storedEvents += static_cast<quint64>(events);
    statistics_.usedSpace = line.usedSpace;
    line.totalEvents = statistics_.storedEvents;
  });
  UpdateRate(base, order, events, line);
}

void ListRecorder::UpdateRate(const QString& base, const DumpOrder& order, qint64 events, StatLine line) {
  eventsSinceRate_ += events;
  const qint64 elapsedMs = rateTimer_.ElapsedMs();
  if (elapsedMs <= RatePeriodMs) {
    return;
  }
  line.eventRate = static_cast<double>(eventsSinceRate_) / static_cast<double>(elapsedMs) * 1000.0;
  control_.Count(order, {}, [&] { statistics_.eventRate = line.eventRate; });
  eventsSinceRate_ = 0;
  rateTimer_.Start();
  qInfo() << " TIMER STAT " << line.usedSpace;
  if (AppendStatLine(base + QLatin1String(".stat"), statHeaderDue_, line)) {
    statHeaderDue_ = false;
  }
}

}  // namespace korvax
