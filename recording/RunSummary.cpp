#include "recording/RunSummary.h"

#include "framework/Lock.h"
#include "recording/RunFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QtDebug>

namespace korvax {

namespace {

// Takes back what was written of a line that found no room: the next one would run into it.
bool AppendWhole(QFile& file, const QByteArray& line) {
  const qint64 before = file.size();
  if (file.write(line) == line.size()) {
    return true;
  }
  file.resize(before);
  return false;
}

void Write(const QString& folder, const QJsonObject& line, QIODevice::OpenMode more) {
  static QMutex mutex;  // recorders and run control write to the same file
  const Lock lock(mutex);
  QFile file(folder + QStringLiteral("/run.summary"));
  if (!IsPath(file.fileName()) || (more == QIODevice::ExistingOnly && !file.exists())) {
    return;
  }
  if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered | more) ||
      !AppendWhole(file, QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n')) {
    qInfo() << "Unable to write the run summary" << file.fileName() << ":" << file.errorString()
            << ". The run goes on; its files can't all be verified.";
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
