#pragma once

#include "framework/KorvaxPayload.h"
#include "recording/DumpSettings.h"
#include "runfiles/Checksum.h"

#include <QFile>
#include <QHash>

#include <string_view>
#include <utility>

namespace korvax {

/// The forms of run files, numbered as records know them. In the unknown one they write nothing.
enum class FileForm : quint32 { Binary = FormatBinary, Csv = FormatCsv, Json = FormatJson, Unknown };

/// "BIN", "CSV" and "JSON", letter case included.
FileForm FileFormOf(const QString& fileType);

/// ".bin", ".csv" or ".json"; empty for the unknown.
QString ExtensionOf(FileForm form);

/// The path of a block's file of a run: storage root, run id, block name and index; the extension comes to it.
QString RunFileBase(const DumpSettings& settings, const QString& blockName, qint64 index);

/// Whether the system can take the text for a path. Qt would cut it at a NUL, and so name another file.
bool IsPath(const QString& text);

/// A file of a run while it is written. Unbuffered: what Write took is with the operating system, so that a killed
/// process leaves it readable. One thread.
class RunFile {
public:
  enum class Result { Open, CannotOpen, CannotWrite };

  /// Creates the file, or empties the one there, and writes its head: the bytes given, or for JSON the "[" of the
  /// array. CannotWrite when the head finds no room, for instance: the file is closed then. No file may be open.
  Result Open(const QString& path, FileForm form, std::string_view head = {});
  bool IsOpen() const { return file_.isOpen(); }

  /// Writes the bytes of so many records, all or none: after a failure the file holds what it held before. False
  /// when closed, too, and when the file has been removed meanwhile: what is written then is lost with the file.
  bool Write(std::string_view bytes, quint64 records = 0);

  /// Ends the file, for JSON with "]". False when that failed, or the file has been removed; it is closed all the
  /// same. The path and the problem stay.
  bool Close();

  /// Records that were in files which Open has emptied, since this was last asked.
  quint64 TakeOverwritten() { return std::exchange(overwritten_, 0); }
  /// What is in the files so far counts as overwritten no more. Until then each file is remembered.
  void ForgetRecords() { records_.clear(); }

  /// Records that were written to it since it was opened, in whichever run.
  quint64 Records() const { return recordsInFile_; }
  /// Checksum of all bytes that were written to it since it was opened.
  std::string ChecksumHex() const { return checksum_.Hex(); }

  QString Path() const { return file_.fileName(); }
  /// Bytes written to it since it was opened; they stay known when it is closed.
  qint64 Size() const { return size_; }
  /// Why the last operation failed, in the system's words.
  const QString& Problem() const { return problem_; }

private:
  bool WriteAll(std::string_view bytes);
  bool IsRemoved();

  QFile file_;
  FileForm form_ = FileForm::Unknown;
  QString problem_;
  qint64 size_ = 0;
  quint64 recordsInFile_ = 0;
  runfiles::Checksum checksum_;
  QHash<QString, quint64> records_;  // in each file, by path
  quint64 overwritten_ = 0;
};

}  // namespace korvax
