#include "recording/RunFile.h"

#include <sys/stat.h>
#include <cerrno>

namespace korvax {

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

bool IsPath(const QString& text) {
  return !text.contains(QChar(0));
}

RunFile::Result RunFile::Open(const QString& path, FileForm form, std::string_view head) {
  if (!IsPath(path)) {
    problem_ = qt_error_string(EINVAL);
    return Result::CannotOpen;
  }
  file_.setFileName(path);
  form_ = form;
  if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
    problem_ = file_.errorString();
    return Result::CannotOpen;
  }
  overwritten_ += records_.take(path);
  size_ = 0;
  recordsInFile_ = 0;
  checksum_ = {};
  if (!Write(form == FileForm::Json ? "[" : head)) {
    file_.close();
    return Result::CannotWrite;
  }
  return Result::Open;
}

bool RunFile::Write(std::string_view bytes, quint64 records) {
  if (!file_.isOpen()) {
    return false;
  }
  if (!WriteAll(bytes) || IsRemoved()) {
    return false;
  }
  size_ += static_cast<qint64>(bytes.size());
  checksum_.Add(bytes);
  recordsInFile_ += records;
  if (records != 0) {
    records_[file_.fileName()] += records;
  }
  return true;
}

bool RunFile::WriteAll(std::string_view bytes) {
  while (!bytes.empty()) {
    const qint64 written = file_.write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (written <= 0) {
      problem_ = file_.errorString();
      file_.resize(size_);
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool RunFile::IsRemoved() {
  struct stat status = {};
  const bool removed = fstat(file_.handle(), &status) == 0 && status.st_nlink == 0;
  if (removed) {
    problem_ = QStringLiteral("the file was removed");
  }
  return removed;
}

bool RunFile::Close() {
  if (!file_.isOpen()) {
    return true;
  }
  const bool ended = form_ == FileForm::Json ? Write("]") : !IsRemoved();
  file_.unsetError();
  file_.close();
  if (file_.error() != QFileDevice::NoError) {
    problem_ = file_.errorString();
    return false;
  }
  return ended;
}

}  // namespace korvax
