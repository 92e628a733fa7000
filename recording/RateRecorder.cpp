#include "recording/RateRecorder.h"

#include "recording/RateFormat.h"

#include <QtDebug>

namespace korvax {

RateRecorder::RateRecorder(const QString& blockName, DumpControl& control, const Clock& clock)
    : RunRecorder(blockName, control, clock), runTimer_(clock) {}

void RateRecorder::Take(std::span<const RateHistory::Record> records) {
  const DumpOrder order = TakeOrder(records.size());
  if (order.status == DumpStatus::Recording && !records.empty()) {
    Record(records, order);
  }
}

void RateRecorder::Record(std::span<const RateHistory::Record> records, const DumpOrder& order) {
  const FileForm form = FileFormOf(order.settings.fileType);
  if (fileOpenNeeded_) {
    OpenRateFile(order, form);
  }
  if (!file_.IsOpen()) {
    Count(order, {.failed = records.size()});
    return;
  }
  buffer_.Clear();
  for (const RateHistory::Record& record : records) {
    Append(*record, form);
  }
  const quint64 written = form == FileForm::Unknown ? 0 : records.size();
  Count(order, {.discarded = records.size() - written});
  if (WriteBuffer(order, written)) {
    Count(order, {.recorded = written});
  }
}

// Kept: a file that can't be opened is tried once; the records are lost until recording is stopped and started.
void RateRecorder::OpenRateFile(const DumpOrder& order, FileForm form) {
  const QString extension = form == FileForm::Unknown ? QStringLiteral(".dat") : ExtensionOf(form);
  const QString path = FileBase(order, fileIndex_) + extension;
  ByteWriter head;
  if (form == FileForm::Binary) {
    ratefile::AppendBinaryHead(clock_.SecondsSinceEpoch(), head);
  } else if (form == FileForm::Csv) {
    ratefile::AppendCsvHead(head);
  }
  fileOpenNeeded_ = false;
  qInfo() << "Opening RATE dumper: " << path;
  if (OpenFile(order, path, form, head.View()) != RunFile::Result::Open) {
    qWarning() << "Cannot open file:" << path;
  }
  runTimer_.Start();
}

void RateRecorder::Append(const KorvaxPayload_RateCounters& record, FileForm form) {
  const qint64 timeMs = runTimer_.ElapsedMs();
  switch (form) {
    case FileForm::Binary:
      ratefile::AppendBinary(timeMs, record, buffer_);
      break;
    case FileForm::Csv:
      ratefile::AppendCsv(timeMs, record, buffer_);
      break;
    case FileForm::Json:
      ratefile::AppendJson(timeMs, record, buffer_);
      break;
    case FileForm::Unknown:
      break;
  }
}

}  // namespace korvax
