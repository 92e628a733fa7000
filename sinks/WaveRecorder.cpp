#include "sinks/WaveRecorder.h"

#include "sinks/WaveFormat.h"

#include <algorithm>

namespace korvax {

WaveRecorder::WaveRecorder(const QString& blockName, DumpControl& control, const TraceStore& store,
                           const Clock& clock)
    : RunRecorder(blockName, control, clock), store_(store), interval_(clock) {}

void WaveRecorder::Take(const KorvaxPayload_Waves* first, quint64 further) {
  const DumpOrder order = TakeOrder(first == nullptr ? 0 : 1 + further);
  if (order.status == DumpStatus::Recording && first != nullptr) {
    Count(order, {.discarded = further});
    Record(*first, order);
  }
}

void WaveRecorder::Record(const KorvaxPayload_Waves& waves, const DumpOrder& order) {
  if (fileOpenNeeded_) {
    interval_.Start();
    fileOpenNeeded_ = false;
    if (!OpenWaveFile(order)) {
      return;
    }
  }
  if (interval_.ElapsedMs() <= order.settings.dumpTime) {
    Count(order, {.discarded = 1});
    return;
  }
  interval_.Start();
  if (countInFile_ > order.settings.eventsPerFile) {
    ++fileIndex_;
    countInFile_ = 0;
    if (!OpenWaveFile(order)) {
      return;
    }
  }
  const FileForm form = FileFormOf(order.settings.fileType);
  Append(waves, form);
  ++countInFile_;
  const quint64 written = form == FileForm::Unknown ? 0 : 1;
  if (!file_.IsOpen()) {
    Count(order, {.failed = 1});
    return;
  }
  Count(order, {.discarded = 1 - written});
  if (WriteBuffer(order, written)) {
    Count(order, {.recorded = written});
  }
}

// Kept: a file that can't be opened is passed over without a word, and its records with it; the next rollover
// tries the next one. The counts tell. False, and recording stops with a word, when its head can't be written.
bool WaveRecorder::OpenWaveFile(const DumpOrder& order) {
  const FileForm form = FileFormOf(order.settings.fileType);
  if (form == FileForm::Unknown) {
    CloseFile();
    return true;
  }
  ByteWriter head;
  if (form == FileForm::Binary) {
    wavefile::AppendBinaryHead(fileIndex_ == 0, clock_.SecondsSinceEpoch(), head);
  }
  const QString path = FileBase(order, fileIndex_) + ExtensionOf(form);
  if (OpenFile(order, path, form, head.View()) == RunFile::Result::CannotWrite) {
    LogWriteFailure();
    Fail(order, 1);
    return false;
  }
  return true;
}

void WaveRecorder::Append(const KorvaxPayload_Waves& waves, FileForm form) {
  const auto channels = static_cast<std::size_t>(store_.Shape().channels);
  const auto count = static_cast<qint32>(std::min(waves.waves.size(), channels));
  buffer_.Clear();
  switch (form) {
    case FileForm::Binary:
      wavefile::AppendBinary(store_, count, waves.timestamp, buffer_);
      break;
    case FileForm::Csv:
      wavefile::AppendCsv(store_, count, waves.timestamp, buffer_);
      break;
    case FileForm::Json:
      buffer_.Text(countInFile_ == 0 ? "" : ",");
      wavefile::AppendJson(store_, count, waves.timestamp, buffer_);
      break;
    case FileForm::Unknown:
      break;
  }
}

}  // namespace korvax
