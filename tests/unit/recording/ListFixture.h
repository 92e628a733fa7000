#pragma once

#include "recording/ListRecorder.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <string>

namespace test {

inline std::string FileBytes(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return file.readAll().toStdString();
}

/// A record that writes nothing and does something while a recorder has its container in hand.
class ActingRecord final : public KorvaxPayload {
public:
  explicit ActingRecord(std::function<void()> act) : KorvaxPayload(Kind::Wave, 0), act_(std::move(act)) {}

  std::unique_ptr<KorvaxPayload> Clone() const override { return std::make_unique<ActingRecord>(act_); }
  bool Write(quint32 /*format*/, korvax::ByteWriter& /*out*/) const override {
    act_();
    return false;
  }

private:
  const std::function<void()> act_;
};

inline std::unique_ptr<KorvaxPayload> Acting(std::function<void()> act) {
  return std::make_unique<ActingRecord>(std::move(act));
}

/// An event of channel 0 and energy 0: "<timestamp>,0,0,\n" in a CSV file.
inline std::unique_ptr<KorvaxPayload> Event(quint64 timestamp) {
  return Energy(0, 0, timestamp);
}

/// A record that stands for many events.
inline std::unique_ptr<KorvaxPayload> Events(qint32 count) {
  auto record = Event(0);
  record->count = count;
  return record;
}

/// A list recorder without a thread, on a clock that the test moves, below a folder of its own. The block is named
/// "dumper"; CSV files of up to a thousand events unless the test sets others.
class ListFixture : public testing::Test {
protected:
  using Settings = korvax::DumpSettings;

  ListFixture() {
    control.Set([this](Settings& settings) { settings.filePath = folder.path(); });
  }

  void SetType(const QString& type) {
    control.Set([&](Settings& settings) { settings.fileType = type; });
  }
  void SetEventsPerFile(qint32 events) {
    control.Set([&](Settings& settings) { settings.eventsPerFile = events; });
  }
  void MakeFolder(const QString& runId) { ASSERT_TRUE(QDir(folder.path()).mkpath(runId)); }
  /// As the block begins one; the folder exists.
  void StartRun(const QString& runId) {
    MakeFolder(runId);
    control.StartRun([&](Settings& settings) {
      settings.runId = runId;
      statistics = {};
    });
  }
  void Stop() { control.SetStatus(korvax::DumpStatus::Stopped); }
  void Pause() { control.SetStatus(korvax::DumpStatus::Paused); }
  void Restart() { control.SetStatus(korvax::DumpStatus::Recording); }

  /// One container.
  template <typename... Records>
  void Take(Records... records) {
    recorder.Take(*MessageOf(std::move(records)...).batch);
  }
  /// Containers of one event each, with the timestamps from `first` to `last`.
  void TakeOneByOne(quint64 first, quint64 last) {
    for (quint64 timestamp = first; timestamp <= last; ++timestamp) {
      Take(Event(timestamp));
    }
  }
  /// One container of events with the timestamps from `first` to `last`.
  void TakeTogether(quint64 first, quint64 last) {
    PayloadBatch batch;
    for (quint64 timestamp = first; timestamp <= last; ++timestamp) {
      batch.records.push_back(Event(timestamp));
    }
    recorder.Take(batch);
  }

  QString PathOf(const QString& file) const { return folder.filePath(file); }
  std::string Bytes(const QString& file) const { return FileBytes(PathOf(file)); }
  /// Below the folder, sorted.
  QStringList Files() const {
    QStringList files;
    for (QDirIterator it(folder.path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
      files << QDir(folder.path()).relativeFilePath(it.next());
    }
    files.sort();
    return files;
  }
  QString OpenFailure(const QString& file, const QString& reason) const {
    return QStringLiteral("Unable to open file  \"%1\"  errno:  \"%2\" . ").arg(PathOf(file), reason) +
           QStringLiteral("Acquisition disabled in order to prevent software crash");
  }
  QString WriteFailure(const QString& file, int byte, const QString& reason) const {
    return QStringLiteral("Unable to write file \"%1\" at byte %2 : \"%3\" . ")
               .arg(PathOf(file))
               .arg(byte)
               .arg(reason) +
           QStringLiteral("Recording stopped, acquisition goes on. Mend it and start a new run.");
  }
  QString EndFailure(const QString& file, const QString& reason) const {
    return QStringLiteral("Unable to end file \"%1\" : \"%2\" . Check what it holds.").arg(PathOf(file), reason);
  }
  /// The line on a file of the run that is emptied.
  QString Reuse(const QString& file, int records) const {
    return QStringLiteral("Run file \"%1\" is used again: its %2 records are given up")
        .arg(PathOf(file))
        .arg(records);
  }
  korvax::DumpStatus Status() const { return control.Status(); }
  korvax::DumpCounts Counts() const { return control.Counts(); }

  QTemporaryDir folder;
  FakeClock clock;
  LogCapture log;
  PinInput input{"energy"};
  korvax::DumpControl control{input, {.eventsPerFile = 1'000, .fileType = "CSV", .runId = "0"}};
  korvax::RunStatistics statistics;
  korvax::ListRecorder recorder{"dumper", control, statistics, clock};
};

}  // namespace test
