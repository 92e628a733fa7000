#include "recording/ListRecorder.h"

#include <QtDebug>

#include <cerrno>

namespace korvax {

namespace {

constexpr qint64 RatePeriodMs = 1000;

}  // namespace

ListRecorder::ListRecorder(const QString& blockName, DumpControl& control, RunStatistics& statistics,
                           const Clock& clock)
    : RunRecorder(blockName, control, clock), statistics_(statistics), runTimer_(clock), rateTimer_(clock) {}

void ListRecorder::Take(const PayloadBatch& batch) {
  const DumpOrder order = TakeOrder(batch.Size());
  if (order.status == DumpStatus::Recording) {
    Record(batch, order);
  }
}

void ListRecorder::Record(const PayloadBatch& batch, const DumpOrder& order) {
  const FileForm form = FileFormOf(order.settings.fileType);
  const qint64 index = fileIndex_;  // of all names below, whatever a rollover makes of it
  if (!PrepareFile(order, index, form)) {
    Fail(order, batch.Size());
    return;
  }
  const Appended appended = Append(batch, form);
  Count(order, {.discarded = appended.leftOut});
  if (WriteBuffer(order, appended.written)) {
    countInFile_ += appended.events;
    Report(order, index, appended);
  }
}

bool ListRecorder::PrepareFile(const DumpOrder& order, qint64 index, FileForm form) {
  if (fileOpenNeeded_) {
    runTimer_.Start();
    rateTimer_.Start();
    statHeaderDue_ = true;
    if (!OpenListFile(order, index, form)) {
      return false;
    }
  }
  return countInFile_ <= order.settings.eventsPerFile || RollOver(order, index, form);
}

// Kept: the file opened here has the name that was computed before the index went up, so that the first rollover
// empties the first file and goes on in it.
bool ListRecorder::RollOver(const DumpOrder& order, qint64 index, FileForm form) {
  ++fileIndex_;
  fileOpenNeeded_ = true;
  statHeaderDue_ = true;
  countInFile_ = 0;
  return OpenListFile(order, index, form);
}

bool ListRecorder::OpenListFile(const DumpOrder& order, qint64 index, FileForm form) {
  const QString path = FileBase(order, index) + ExtensionOf(form);
  ByteWriter head;
  if (form == FileForm::Binary) {
    head.Text("KVXS").Decimal(clock_.SecondsSinceEpoch());
  }
  const bool isKnown = form != FileForm::Unknown;
  if (isKnown && OpenFile(order, path, form, head.View()) == RunFile::Result::Open) {
    return true;
  }
  qInfo() << "Unable to open file " << path << " errno: " << (isKnown ? file_.Problem() : qt_error_string(EINVAL))
          << ". Acquisition disabled in order to prevent software crash";
  return false;
}

ListRecorder::Appended ListRecorder::Append(const PayloadBatch& batch, FileForm form) {
  Appended appended;
  buffer_.Clear();
  ForEachRecord(batch, [&](const auto& record) {
    if (form == FileForm::Json && !fileOpenNeeded_) {
      buffer_.Text(",\n");
    }
    appended.written += record.Write(static_cast<quint32>(form), buffer_) ? 1U : 0U;
    appended.events += record.count;
    fileOpenNeeded_ = false;
  });
  appended.leftOut = batch.Size() - appended.written;
  return appended;
}

void ListRecorder::Report(const DumpOrder& order, qint64 index, const Appended& appended) {
  StatLine line;
  line.runningTime = static_cast<double>(runTimer_.ElapsedMs()) / 1000.0;
  line.usedSpace = file_.Size();
  const bool isCurrent = Count(order, {.recorded = appended.written}, [&] {
    statistics_.runningTime = line.runningTime;
    statistics_.storedEvents += static_cast<quint64>(appended.events);
    statistics_.usedSpace = line.usedSpace;
    line.totalEvents = statistics_.storedEvents;
  });
  if (isCurrent) {
    UpdateRate(order, index, appended.events, line);
  }
}

void ListRecorder::UpdateRate(const DumpOrder& order, qint64 index, qint64 events, StatLine line) {
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
  AppendStatistics(FileBase(order, index) + QLatin1String(".stat"), line);
}

void ListRecorder::AppendStatistics(const QString& path, const StatLine& line) {
  if (path != statFile_.Path()) {
    EndStatistics();
    statFile_ = StatFile(path);
  }
  const bool isFirst = statFile_.Size() == 0;
  if (statFile_.Append(statHeaderDue_, line)) {
    statHeaderDue_ = false;
    if (isFirst) {
      Note("open", path, {});
    }
  }
}

void ListRecorder::EndStatistics() {
  if (statFile_.Size() != 0) {
    Note("close", statFile_.Path(),
         {{QStringLiteral("bytes"), statFile_.Size()},
          {QStringLiteral("xxh128"), QString::fromStdString(statFile_.ChecksumHex())}});
  }
  statFile_ = {};
}

}  // namespace korvax
