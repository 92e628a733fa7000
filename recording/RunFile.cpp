#include "recording/RunFile.h"

#include <QtDebug>

#include <sys/stat.h>

namespace korvax {

namespace {

bool IsRemoved(const QFile& file) {
  struct stat status = {};
  return fstat(file.handle(), &status) == 0 && status.st_nlink == 0;
}

}  // namespace

FileForm FileFormOf(const QString& fileType) {
  if (fileType == QLatin1String("BIN")) {
    return FileForm::Binary;
  }
  if (fileType == QLatin1String("CSV")) {
    return FileForm::Csv;
  }
  return fileType == QLatin1String("JSON") ? FileForm::Json : FileForm::Unknown;
}

QString ExtensionOf(FileForm form) {
  switch (form) {
    case FileForm::Binary:
      return QStringLiteral(".bin");
    case FileForm::Csv:
      return QStringLiteral(".csv");
    case FileForm::Json:
      return QStringLiteral(".json");
    case FileForm::Unknown:
      break;
  }
  return {};
}

QString RunFileBase(const DumpSettings& settings, const QString& blockName, qint64 index) {
  return settings.filePath + QLatin1Char('/') + settings.runId + QLatin1Char('/') + blockName + QLatin1Char('_') +
         QString::number(index);
}

bool RunFile::Open(const QString& path, FileForm form, std::string_view head) {
  Close();
  file_.setFileName(path);
  form_ = form;
  if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
    problem_ = file_.errorString();
    return false;
  }
  if (!Write(form == FileForm::Json ? "[" : head)) {
    file_.close();
    return false;
  }
  return true;
}

void RunFile::Close() {
  if (file_.isOpen() && form_ == FileForm::Json) {
    Write("]");
  }
  file_.close();
}

bool RunFile::Write(std::string_view bytes) {
  if (!file_.isOpen()) {
    return false;
  }
  const qint64 before = file_.pos();
  while (!bytes.empty()) {
    const qint64 written = file_.write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (written <= 0) {
      problem_ = file_.errorString();
      file_.resize(before);
      file_.seek(before);
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (IsRemoved(file_)) {
    problem_ = QStringLiteral("the file was removed");
    return false;
  }
  return true;
}

void LogWriteFailure(const RunFile& file) {
  qInfo() << "Unable to write file" << file.Path() << "at byte" << file.Size() << ":" << file.Problem()
          << ". Recording stopped, acquisition goes on. Mend it and start a new run.";
}

}  // namespace korvax
