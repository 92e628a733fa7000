#pragma once

#include "recording/DumpControl.h"

#include <QFile>

#include <string_view>

namespace korvax {

/// The forms of run files.
enum class FileForm { Binary, Csv, Json, Unknown };

/// "BIN", "CSV" and "JSON", letter case included.
FileForm FileFormOf(const QString& fileType);

/// ".bin", ".csv" or ".json"; empty for the unknown.
QString ExtensionOf(FileForm form);

/// The path of a block's file of a run: storage root, run id, block name and index; the extension comes to it.
QString RunFileBase(const DumpSettings& settings, const QString& blockName, qint64 index);

/// A file of a run while it is written. Unbuffered: what Write took is with the operating system, so that a killed
/// process leaves everything readable. One thread.
class RunFile {
public:
  /// Creates the file, or empties the one there, and writes its head: the bytes given, or for JSON the "[" of the
  /// array. Closes the one before. False when the file can't be opened or its head not be written.
  bool Open(const QString& path, FileForm form, std::string_view head = {});
  bool IsOpen() const { return file_.isOpen(); }

  /// Writes all bytes or none: after a failure the file holds what it held before. False when closed, too, and
  /// when the file has been removed meanwhile: what is written then is lost with the file.
  bool Write(std::string_view bytes);

  /// Ends the file, for JSON with "]". The path and the problem stay.
  void Close();

  QString Path() const { return file_.fileName(); }
  /// Bytes in it.
  qint64 Size() const { return file_.pos(); }
  /// Why the last Open or Write failed, in the system's words.
  const QString& Problem() const { return problem_; }

private:
  QFile file_;
  FileForm form_ = FileForm::Unknown;
  QString problem_;
};

/// Logs that recording stops at this file, and why.
void LogWriteFailure(const RunFile& file);

}  // namespace korvax
