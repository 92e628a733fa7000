#include "sinks/WaveRecorder.h"

#include "sinks/WaveFormat.h"

#include <algorithm>

namespace korvax {

WaveRecorder::WaveRecorder(const QString& blockName, DumpControl& control, const TraceStore& store,
                           const Clock& clock)
    : blockName_(blockName), control_(control), store_(store), clock_(clock), interval_(clock) {}

void WaveRecorder::Take(const KorvaxPayload_Waves* waves, quint64 further) {
  const DumpOrder order = control_.Order();
  if (order.stops != stopsSeen_) {
    stopsSeen_ = order.stops;
    Finish();
  }
  if (waves == nullptr || order.status == DumpStatus::Stopped) {
    return;
  }
  const bool paused = order.status == DumpStatus::Paused;
  control_.Count(order, {.discarded = further + (paused ? 1U : 0U)});
  if (!paused) {
    Record(*waves, order);
  }
}

void WaveRecorder::Finish() {
  file_.Close();
  fileOpenNeeded_ = true;
  fileIndex_ = 0;
  recordsInFile_ = 0;
}

void WaveRecorder::Record(const KorvaxPayload_Waves& waves, const DumpOrder& order) {
  if (fileOpenNeeded_) {
    interval_.Start();
    OpenFile(order);
    fileOpenNeeded_ = false;
  }
  if (interval_.ElapsedMs() <= order.settings.dumpTime) {
    control_.Count(order, {.discarded = 1});
    return;
  }
  interval_.Start();
  if (recordsInFile_ > order.settings.eventsPerFile) {
    ++fileIndex_;
    recordsInFile_ = 0;
    OpenFile(order);
  }
  Append(waves, FileFormOf(order.settings.fileType));
  ++recordsInFile_;
  if (file_.Write(buffer_.View())) {
    control_.Count(order, {.recorded = 1});
    return;
  }
  control_.Count(order, {.failed = 1});
  if (file_.IsOpen()) {
    LogWriteFailure(file_);
    control_.StopAfterFailure(order);
  }
}

// Kept: a file that can't be opened is passed over without a word, and its records with it; the next rollover
// tries the next one. The counts tell.
void WaveRecorder::OpenFile(const DumpOrder& order) {
  const FileForm form = FileFormOf(order.settings.fileType);
  ByteWriter head;
  if (form == FileForm::Binary) {
    waves::AppendBinaryHead(fileIndex_ == 0, clock_.SecondsSinceEpoch(), head);
  }
  file_.Close();
  if (form != FileForm::Unknown) {
    file_.Open(RunFileBase(order.settings, blockName_, fileIndex_) + ExtensionOf(form), form, head.View());
  }
}

void WaveRecorder::Append(const KorvaxPayload_Waves& waves, FileForm form) {
  const auto channels = static_cast<std::size_t>(store_.Shape().channels);
  const auto count = static_cast<qint32>(std::min(waves.waves.size(), channels));
  buffer_.Clear();
  switch (form) {
    case FileForm::Binary:
      waves::AppendBinary(store_, count, waves.timestamp, buffer_);
      break;
    case FileForm::Csv:
      waves::AppendCsv(store_, count, waves.timestamp, buffer_);
      break;
    case FileForm::Json:
      buffer_.Text(recordsInFile_ == 0 ? "" : ",");
      waves::AppendJson(store_, count, waves.timestamp, buffer_);
      break;
    case FileForm::Unknown:
      break;
  }
}

}  // namespace korvax
