#include "client/RunVerdict.h"

#include "client/FileSummaryText.h"
#include "client/RunFilePaths.h"
#include "client/TextFit.h"
#include "runfiles/Checksum.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <set>

namespace korvax::client {

namespace {

constexpr qint64 pieceSize = 1 << 20;

/// As a run file's reader sees it; statistics are plain text.
QString ReadersVerdict(const QString& path) {
  if (path.endsWith(QLatin1String(".stat"))) {
    return Counted(static_cast<quint64>(QFileInfo(path).size()), QStringLiteral("byte"));
  }
  return Verdict(runfiles::Summarise(QFile::encodeName(path).toStdString()));
}

/// The checksum of a file, or why there is none.
Read<QString> ChecksumOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    return {{}, file.errorString()};
  }
  runfiles::Checksum checksum;
  QByteArray piece(static_cast<int>(pieceSize), '\0');
  qint64 size = 0;
  while ((size = file.read(piece.data(), pieceSize)) > 0) {
    checksum.Add({piece.constData(), static_cast<std::size_t>(size)});
  }
  return size == 0 ? Read<QString>{QString::fromStdString(checksum.Hex()), {}}
                   : Read<QString>{{}, file.errorString()};
}

FileVerdict Bad(const QString& text) {
  return {false, text};
}

FileVerdict CompareContent(const QString& path, const RecordedFile& file) {
  const Read<QString> checksum = ChecksumOf(path);
  if (!checksum.value) {
    return Bad(QStringLiteral("can't be read: ") + checksum.fault);
  }
  if (*checksum.value != file.checksum) {
    return Bad(QStringLiteral("changed, its checksum is another than when it was written"));
  }
  const QString bytes = Counted(*file.bytes, QStringLiteral("byte"));
  return {true, QStringLiteral("ok, ") +
                    (file.records ? CountedRecords(*file.records) + QStringLiteral(", ") : QString()) + bytes};
}

FileVerdict Compare(const QString& path, const RecordedFile& file) {
  const QFileInfo info(path);
  if (info.isSymLink()) {
    return Bad(QStringLiteral("a link, which is not followed"));
  }
  if (!info.exists()) {
    return Bad(QStringLiteral("missing"));
  }
  if (!info.isFile()) {
    return Bad(QStringLiteral("not a file"));
  }
  if (!file.ended) {
    return Bad(QStringLiteral("not ended; as it is: ") + ReadersVerdict(path));
  }
  if (!file.bytes || file.checksum.isEmpty()) {
    return Bad(QStringLiteral("can't be compared, the summary lacks its size or checksum"));
  }
  const auto size = static_cast<quint64>(info.size());
  if (size != *file.bytes) {
    const QString sizes = QStringLiteral("%1 bytes instead of %2").arg(size).arg(*file.bytes);
    return size > *file.bytes ? Bad(QStringLiteral("longer, ") + sizes)
                              : Bad(QStringLiteral("shorter, %1; as it is: %2").arg(sizes, ReadersVerdict(path)));
  }
  return CompareContent(path, file);
}

}  // namespace

FileVerdict VerifyFile(const QString& folder, const RecordedFile& file) {
  const FileVerdict verdict = Compare(QDir(folder).filePath(file.name), file);
  return file.problem ? Bad(verdict.text + QStringLiteral("; but the server could not end it well: ") +
                            Harmless(*file.problem))
                      : verdict;
}

QStringList UnknownFiles(const QString& folder, const RunSummary& summary) {
  std::set<QString> known{runSummaryName};
  for (const RecordedFile& file : summary.files) {
    known.insert(file.name);
  }
  QStringList unknown;
  for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System)) {
    if (!known.contains(name)) {
      unknown << name;
    }
  }
  std::sort(unknown.begin(), unknown.end(), NaturallyBefore);
  return unknown;
}

}  // namespace korvax::client
