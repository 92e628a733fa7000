#include "recording/RateRecorder.h"

#include "recording/RateFormat.h"

#include <QtDebug>

namespace korvax {

RateRecorder::RateRecorder(const QString& blockName, DumpControl& control, const Clock& clock)
    : blockName_(blockName), control_(control), clock_(clock), runTimer_(clock) {}

void RateRecorder::Take(std::span<const KorvaxPayload_RateCounters* const> records) {
  const DumpOrder order = control_.Order();
  if (order.stops != stopsSeen_) {
    stopsSeen_ = order.stops;
    Finish();
  }
  if (order.status == DumpStatus::Recording) {
    Record(records, order);
  } else if (order.status == DumpStatus::Paused) {
    control_.Count(order, {.discarded = records.size()});
  }
}

void RateRecorder::Finish() {
  file_.Close();
  fileOpenNeeded_ = true;
}

void RateRecorder::Record(std::span<const KorvaxPayload_RateCounters* const> records, const DumpOrder& order) {
  const FileForm form = FileFormOf(order.settings.fileType);
  buffer_.Clear();
  if (fileOpenNeeded_) {
    OpenFile(order.settings, form);
  }
  for (const KorvaxPayload_RateCounters* record : records) {
    Append(*record, form);
  }
  if (file_.Write(buffer_.View())) {
    control_.Count(order, {.recorded = records.size()});
    return;
  }
  control_.Count(order, {.failed = records.size()});
  if (file_.IsOpen()) {
    LogWriteFailure(file_);
    control_.StopAfterFailure(order);
  }
}

// Kept: a file that can't be opened is tried once; the records are lost until recording is stopped and started.
void RateRecorder::OpenFile(const DumpSettings& settings, FileForm form) {
  const QString extension = form == FileForm::Unknown ? QStringLiteral(".dat") : ExtensionOf(form);
  const QString path = RunFileBase(settings, blockName_, 0) + extension;
  ByteWriter head;
  if (form == FileForm::Binary) {
    rates::AppendBinaryHead(clock_.SecondsSinceEpoch(), head);
  } else if (form == FileForm::Csv) {
    rates::AppendCsvHead(head);
  }
  fileOpenNeeded_ = false;
  qInfo() << "Opening RATE dumper: " << path;
  if (!file_.Open(path, form, head.View())) {
    qWarning() << "Cannot open file:" << path;
  }
  runTimer_.Start();
}

void RateRecorder::Append(const KorvaxPayload_RateCounters& record, FileForm form) {
  const qint64 timeMs = runTimer_.ElapsedMs();
  switch (form) {
    case FileForm::Binary:
      rates::AppendBinary(timeMs, record, buffer_);
      break;
    case FileForm::Csv:
      rates::AppendCsv(timeMs, record, buffer_);
      break;
    case FileForm::Json:
      rates::AppendJson(timeMs, record, buffer_);
      break;
    case FileForm::Unknown:
      break;
  }
}

}  // namespace korvax
