#pragma once

#include "control/Ledger.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace korvax {

/// Keeps the summary of a run beside the run's files: when and by which configuration it began, when it ended, and
/// what became of every record meanwhile. The recorders add what they know of their files. Main thread.
class RunBook : public QObject {
  Q_OBJECT

public:
  /// The list outlives the book. `hasOpenFiles`: whether any recorder still has a file of the run.
  RunBook(const BlockList& blocks, std::function<bool()> hasOpenFiles);
  /// Ends the run that is still open, if there is one.
  ~RunBook() override;

  /// A run begins in a folder that is there; the one before is ended.
  void Begin(const QString& folder, const QString& runId, const QString& configurationPath);
  void NotePause() { Note("pause"); }
  void NoteRestart();
  /// The run was told to stop. It ends when the recorders have closed its files, which they do at the next data.
  void Stop();

private:
  struct Run {
    QString folder;
    Ledger before;
    QString stopTime;       // empty until it was told to stop
    bool hasEnded = false;  // it may still be restarted
  };

  void Note(const char* event);
  void EndIfClosed();
  void End();

  const BlockList& blocks_;
  const std::function<bool()> hasOpenFiles_;
  std::optional<Run> run_;
  QTimer closing_;
};

}  // namespace korvax
