#pragma once

#include "framework/Account.h"
#include "framework/ByteWriter.h"
#include "framework/Clock.h"
#include "recording/DumpControl.h"
#include "recording/RunFile.h"

#include <QJsonObject>

namespace korvax {

/// What the recorders of events, waves and rates share: how they take orders, and how they count what becomes of
/// records. Needs no thread of its own; one thread at a time.
class RunRecorder {
public:
  /// The fates that recorders book, and Other for records of another kind.
  static const std::vector<Fate>& PossibleFates();

  /// Closes the file, if one is open. The next record begins a dump at index 0.
  void Finish();

  /// What became of the records taken since this was last asked.
  Fates TakeFates() { return std::exchange(fates_, {}); }

protected:
  /// The control and the clock outlive the recorder.
  RunRecorder(const QString& blockName, DumpControl& control, const Clock& clock);
  virtual ~RunRecorder() = default;

  /// Books what became of records; where run control counts them for the run in force, there too.
  void Count(const DumpOrder& order, const DumpCounts& counts) {
    Count(order, counts, [] {});
  }
  /// The same, with DumpControl's `more`.
  template <typename More>
  bool Count(const DumpOrder& order, const DumpCounts& counts, More more) {
    BookFates(counts);
    return control_.Count(order, counts, more);
  }

  /// The order for a message of so many records. What a stop has ended is finished by then.
  DumpOrder TakeOrder(quint64 records);

  /// The path of the file with this index, without extension.
  QString FileBase(const DumpOrder& order, qint64 index) const;
  /// Closes the file before, and counts the records of a file of the run that is emptied by this.
  RunFile::Result OpenFile(const DumpOrder& order, const QString& path, FileForm form, std::string_view head);
  /// One log line when the file can't be ended as it should. Run control learns that none is open.
  void CloseFile();

  /// Writes the buffer, the bytes of so many records, to the file. On failure one log line tells it, and recording
  /// stops.
  bool WriteBuffer(const DumpOrder& order, quint64 records);
  /// Counts the records as failed, stops recording and closes the file, without a word.
  void Fail(const DumpOrder& order, quint64 records);
  void LogWriteFailure() const;

  /// Called before the file of a dump that ends is closed.
  virtual void BeforeEnd() {}
  /// Appends a line about a file, its path given, to the summary of the run that has it.
  void Note(const char* event, const QString& path, QJsonObject line) const;

  const QString blockName_;
  DumpControl& control_;
  const Clock& clock_;
  RunFile file_;
  ByteWriter buffer_;
  bool fileOpenNeeded_ = true;
  qint64 fileIndex_ = 0;
  qint64 countInFile_ = 0;  // what the rollover goes by

private:
  void BeginAnew();
  void EndFile();
  /// Tells the run's summary that the file was closed, whole or with a problem.
  void NoteClosed(bool ended);
  void BookFates(const DumpCounts& counts);

  Fates fates_;
};

}  // namespace korvax
