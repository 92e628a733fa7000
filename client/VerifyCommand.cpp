#include "client/VerifyCommand.h"

#include "client/FileSummaryText.h"
#include "client/LedgerVerdict.h"
#include "client/RunFilePaths.h"
#include "client/RunVerdict.h"
#include "client/TextFit.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace korvax::client {

namespace {

/// Goes through the folders of a request and counts what isn't as it should be.
class Verification {
public:
  explicit Verification(Console& console) : console_(console) {}

  void Verify(const QString& folder) {
    folder_ = folder;
    const Read<RunSummary> summary = ReadRunSummary(folder);
    if (summary.value) {
      VerifyRun(*summary.value);
    } else if (QDir(folder).exists()) {
      ReportFiles(summary.fault);
    } else {
      Say({}, {false, QStringLiteral("no folder, or can't be opened")});
    }
  }

  Ending FinalEnding() const {
    if (bad_ > 0) {
      const QString text = bad_ == 1 ? QStringLiteral("1 file or folder is not as it should be.")
                                     : QStringLiteral("%1 files or folders are not as they should be.").arg(bad_);
      return {ExitCode::BadFile, text};
    }
    return balanced_ ? Ending{}
                     : Ending{ExitCode::NotBalanced, QStringLiteral("an account of records doesn't balance.")};
  }

private:
  void VerifyRun(RunSummary summary) {
    SayRun(summary);
    for (const QString& fault : summary.faults) {
      Say(runSummaryName, {false, fault});
    }
    std::ranges::sort(summary.files, NaturallyBefore, &RecordedFile::name);
    for (const RecordedFile& file : summary.files) {
      Say(file.name, VerifyFile(folder_, file));
    }
    for (const QString& name : UnknownFiles(folder_, summary)) {
      Say(name, {true, QStringLiteral("not in the summary")});
    }
    if (summary.ended) {
      SayAccount(summary.ledger);
    }
  }

  void SayRun(const RunSummary& summary) {
    const QString run =
        QStringLiteral("run %1, started %2").arg(Harmless(summary.runId), Harmless(summary.started));
    Say({},
        summary.ended
            ? FileVerdict{true, run + QStringLiteral(", ended ") + Harmless(summary.stopped)}
            : FileVerdict{false, run + QStringLiteral(", not ended: the server was killed, or records still")});
  }

  void SayAccount(const QJsonValue& value) {
    const Read<Ledger> ledger = LedgerOf(value);
    if (!ledger.value) {
      Say({}, {true, QStringLiteral("the summary has no account of the records")});
      return;
    }
    const LedgerVerdict verdict = Judge(*ledger.value, LedgerSpan::Run);
    balanced_ = balanced_ && verdict.Balanced();
    Say({}, {true, InWords(verdict)});
  }

  /// For a folder without a summary.
  void ReportFiles(const QString& why) {
    Say({}, {false, why + QStringLiteral(", so nothing to compare with; the files as they are:")});
    for (const QString& path : RunFilePaths(folder_)) {
      const runfiles::FileSummary summary = runfiles::Summarise(QFile::encodeName(path).toStdString());
      Say(QFileInfo(path).fileName(), {!summary.fault, Verdict(summary)});
    }
  }

  /// Of the folder itself, for an empty name.
  void Say(const QString& name, const FileVerdict& verdict) {
    bad_ += verdict.good ? 0 : 1;
    const QString path = name.isEmpty() ? folder_ : QDir(folder_).filePath(name);
    console_.Print(QStringLiteral("%1: %2").arg(Harmless(path), verdict.text));
  }

  Console& console_;
  QString folder_;
  int bad_ = 0;
  bool balanced_ = true;
};

}  // namespace

Ending VerifyRuns(const VerifyRequest& request, Console& console) {
  Verification verification(console);
  for (const QString& folder : request.folders) {
    verification.Verify(folder);
  }
  return verification.FinalEnding();
}

}  // namespace korvax::client
