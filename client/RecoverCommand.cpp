#include "client/RecoverCommand.h"

#include "client/FileSummaryText.h"
#include "client/TextFit.h"
#include "runfiles/FileSummary.h"

#include <QFile>

namespace korvax::client {

namespace {

using runfiles::FileSummary;
using runfiles::Form;

constexpr qint64 pieceSize = 1 << 20;

QString Bytes(quint64 count) {
  return Counted(count, QStringLiteral("byte"));
}

/// Empty when the files' names end alike, as run files are told apart by that.
QString FaultOfNames(const RecoverRequest& request, std::optional<Form> form) {
  if (!form) {
    return QStringLiteral("%1 is not named as a run file is: .bin, .csv or .json at its end.")
        .arg(Harmless(request.file));
  }
  if (runfiles::FormOfName(QFile::encodeName(request.output).toStdString()) != form) {
    return QStringLiteral("%1 must end as %2 does, as run files are told apart by that.")
        .arg(Harmless(request.output), Harmless(request.file));
  }
  return {};
}

/// Why nothing can be kept of the file.
QString HopelessText(const QString& file, const FileSummary& summary, Form form) {
  const QString fault = QString::fromStdString(summary.fault->Text());
  if (summary.fault->kind == runfiles::FileFault::Kind::CannotOpen) {
    return QStringLiteral("%1 %2.").arg(file, fault);
  }
  return QStringLiteral("%1: %2.\nNothing was written. Expected at its beginning: %3.")
      .arg(file, fault, QString::fromStdString(runfiles::HeadInWords(form)));
}

/// Copies so many bytes, and then the closing ones; empty, or what went wrong.
QString Copy(QFile& from, quint64 bytes, const QByteArray& closing, QFile& to) {
  while (bytes > 0) {
    const QByteArray piece = from.read(static_cast<qint64>(std::min<quint64>(bytes, pieceSize)));
    if (piece.isEmpty()) {
      return QStringLiteral("%1 got shorter, or can't be read.").arg(Harmless(from.fileName()));
    }
    if (to.write(piece) != piece.size()) {
      break;
    }
    bytes -= static_cast<quint64>(piece.size());
  }
  const bool good = bytes == 0 && to.write(closing) == closing.size() && to.flush();
  return good ? QString()
              : QStringLiteral("%1 can't be written: %2.").arg(Harmless(to.fileName()), to.errorString());
}

/// Leaves no new file behind where it fails.
Ending WriteWhole(const RecoverRequest& request, quint64 bytes, const QByteArray& closing) {
  QFile from(request.file);
  QFile to(request.output);
  if (!from.open(QIODevice::ReadOnly)) {
    return {ExitCode::BadFile,
            QStringLiteral("%1 can't be opened: %2.").arg(Harmless(request.file), from.errorString())};
  }
  if (!to.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
    return {ExitCode::OutputFailed, QStringLiteral("%1 can't be created: %2.\nName a file that isn't there yet.")
                                        .arg(Harmless(request.output), to.errorString())};
  }
  const QString fault = Copy(from, bytes, closing, to);
  if (!fault.isEmpty()) {
    to.close();
    QFile::remove(request.output);  // to.remove() would not, after an error
    return {ExitCode::OutputFailed, fault};
  }
  return {};
}

/// What was kept and what was cut.
QString DoneText(const RecoverRequest& request, const FileSummary& summary, bool isJson) {
  const QString records = CountedRecords(summary.records);
  if (!summary.fault) {
    return QStringLiteral("%1 is whole: %2, copied as it is to %3")
        .arg(Harmless(request.file), records, Harmless(request.output));
  }
  const runfiles::FileFault& fault = *summary.fault;
  return QStringLiteral("%1: %2\n%3: %4, %5 kept%6; %7 cut; the damage begins at byte %8")
      .arg(Harmless(request.file), QString::fromStdString(fault.Text()), Harmless(request.output), records,
           Bytes(*summary.wholeBytes), isJson ? QStringLiteral(", closed with \"]\"") : QString(),
           Bytes(fault.size - *summary.wholeBytes), QString::number(fault.offset));
}

}  // namespace

Ending RecoverFile(const RecoverRequest& request, Console& console) {
  const std::string path = QFile::encodeName(request.file).toStdString();
  const std::optional<Form> form = runfiles::FormOfName(path);
  const QString namesFault = FaultOfNames(request, form);
  if (!namesFault.isEmpty()) {
    return {ExitCode::Usage, namesFault};
  }
  const FileSummary summary = runfiles::Summarise(path);
  if (!summary.wholeBytes) {
    return {ExitCode::BadFile, HopelessText(Harmless(request.file), summary, *form)};
  }
  // The whole bytes never hold the "]", whether the file has it or not.
  const bool isJson = form == Form::Json;
  const Ending ending = WriteWhole(request, *summary.wholeBytes, isJson ? "]" : "");
  if (ending.code == ExitCode::Ok) {
    console.Print(DoneText(request, summary, isJson));
  }
  return ending;
}

}  // namespace korvax::client
