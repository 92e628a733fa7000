#include "recording/RunSummary.h"

#include "framework/Lock.h"
#include "recording/RunFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QtDebug>

namespace korvax {

namespace {

// Why the line could not be written; empty when it was. Takes back what was written of a line that found no room:
// the next one would run into it.
QString AppendWhole(QFile& file, const QByteArray& line) {
  const qint64 before = file.size();
  for (qint64 done = 0; done < line.size();) {
    const qint64 written = file.write(line.constData() + done, line.size() - done);
    if (written <= 0) {
      const QString problem = file.errorString();  // the next call forgets it
      file.resize(before);
      return problem;
    }
    done += written;
  }
  return {};
}

// The same, and nothing done when the file must be there and isn't.
QString AppendTo(const QString& path, const QByteArray& line, QIODevice::OpenMode more) {
  QFile file(path);
  if (!IsPath(path) || (more == QIODevice::ExistingOnly && !file.exists())) {
    return {};
  }
  return file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered | more)
             ? AppendWhole(file, line)
             : file.errorString();
}

// A run with thousands of files would have a line for each.
void TellOnce(const QString& path, const QString& problem, bool begins) {
  static QString told;
  const bool isTold = !begins && told == path;
  told = path;
  if (!isTold) {
    qInfo() << "Unable to write the run summary" << path << ":" << problem
            << ". The run goes on; its files can't all be verified.";
  }
}

void Write(const QString& folder, const QJsonObject& line, QIODevice::OpenMode more) {
  static QMutex mutex;  // recorders and run control write to the same file
  const Lock lock(mutex);
  const QString path = folder + QStringLiteral("/run.summary");
  const QString problem = AppendTo(path, QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n', more);
  if (!problem.isEmpty()) {
    TellOnce(path, problem, more == QIODevice::NotOpen);
  }
}

}  // namespace

void RunSummary::Begin(const QString& folder, const QJsonObject& line) {
  Write(folder, line, QIODevice::NotOpen);
}

void RunSummary::Append(const QString& folder, const QJsonObject& line) {
  Write(folder, line, QIODevice::ExistingOnly);
}

}  // namespace korvax
