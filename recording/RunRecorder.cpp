#include "recording/RunRecorder.h"

#include "recording/RunSummary.h"

#include <QFileInfo>
#include <QtDebug>

namespace korvax {

namespace {

// One huge message must not keep its memory for good.
constexpr std::size_t LargestKeptBuffer = std::size_t{16} << 20;

}  // namespace

RunRecorder::RunRecorder(const QString& blockName, DumpControl& control, const Clock& clock)
    : blockName_(blockName), control_(control), clock_(clock) {}

const std::vector<Fate>& RunRecorder::PossibleFates() {
  static const std::vector<Fate> fates{Fate::Written,     Fate::Overwritten,  Fate::NotWritten, Fate::LeftOut,
                                       Fate::WhilePaused, Fate::WhileStopped, Fate::Other};
  return fates;
}

void RunRecorder::BookFates(const DumpCounts& counts) {
  fates_[Fate::Written] += counts.recorded - counts.overwritten;
  fates_[Fate::Overwritten] += counts.overwritten;
  fates_[Fate::NotWritten] += counts.failed;
  fates_[Fate::LeftOut] += counts.discarded;
}

DumpOrder RunRecorder::TakeOrder(quint64 records) {
  DumpOrder order = control_.TakeOrder(records);
  if (order.status == DumpStatus::Paused) {
    fates_[Fate::WhilePaused] += records;
  } else if (order.status == DumpStatus::Stopped) {
    fates_[order.failing ? Fate::NotWritten : Fate::WhileStopped] += records;
  }
  if (order.stopped) {
    Finish();
  }
  if (order.begun) {
    file_.ForgetRecords();
  }
  return order;
}

void RunRecorder::Finish() {
  BeforeEnd();
  CloseFile();
  BeginAnew();
}

void RunRecorder::BeginAnew() {
  fileOpenNeeded_ = true;
  fileIndex_ = 0;
  countInFile_ = 0;
}

QString RunRecorder::FileBase(const DumpOrder& order, qint64 index) const {
  return RunFileBase(order.settings, blockName_, index);
}

RunFile::Result RunRecorder::OpenFile(const DumpOrder& order, const QString& path, FileForm form,
                                      std::string_view head) {
  EndFile();
  const RunFile::Result result = file_.Open(path, form, head);
  control_.SetFileOpen(result == RunFile::Result::Open);  // a rollover never looks like the end of a run
  if (result == RunFile::Result::Open) {
    Note("open", file_.Path(), {});
  } else if (result == RunFile::Result::CannotWrite) {
    NoteClosed(false);  // what stood under that name is gone
  }
  if (const quint64 records = file_.TakeOverwritten(); records != 0) {
    qInfo() << "Run file" << path << "is used again: its" << records << "records are given up";
    Count(order, {.overwritten = records});
  }
  return result;
}

void RunRecorder::CloseFile() {
  EndFile();
  control_.SetFileOpen(false);
}

void RunRecorder::EndFile() {
  if (!file_.IsOpen()) {
    return;
  }
  const bool ended = file_.Close();
  NoteClosed(ended);
  if (!ended) {
    qInfo() << "Unable to end file" << file_.Path() << ":" << file_.Problem() << ". Check what it holds.";
  }
}

bool RunRecorder::WriteBuffer(const DumpOrder& order, quint64 records) {
  const bool written = file_.Write(buffer_.View(), records);
  if (!written) {
    LogWriteFailure();
    Fail(order, records);
  }
  if (buffer_.Size() > LargestKeptBuffer) {
    buffer_ = ByteWriter();
  }
  return written;
}

void RunRecorder::Fail(const DumpOrder& order, quint64 records) {
  Count(order, {.failed = records});
  control_.StopAfterFailure(order);
  BeforeEnd();
  if (file_.IsOpen()) {
    file_.Close();
    NoteClosed(false);
  }
  control_.SetFileOpen(false);
  BeginAnew();
}

void RunRecorder::NoteClosed(bool ended) {
  QJsonObject line{{QStringLiteral("bytes"), file_.Size()},
                   {QStringLiteral("records"), static_cast<qint64>(file_.Records())},
                   {QStringLiteral("xxh128"), QString::fromStdString(file_.ChecksumHex())}};
  if (!ended) {
    line[QStringLiteral("problem")] = file_.Problem();
  }
  Note("close", file_.Path(), line);
}

void RunRecorder::Note(const char* event, const QString& path, QJsonObject line) const {
  const QFileInfo file(path);
  line[QStringLiteral("event")] = QLatin1String(event);
  line[QStringLiteral("file")] = file.fileName();
  line[QStringLiteral("block")] = blockName_;
  RunSummary::Append(file.path(), line);
}

void RunRecorder::LogWriteFailure() const {
  qInfo() << "Unable to write file" << file_.Path() << "at byte" << file_.Size() << ":" << file_.Problem()
          << ". Recording stopped, acquisition goes on. Mend it and start a new run.";
}

}  // namespace korvax
