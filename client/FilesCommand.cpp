#include "client/FilesCommand.h"

#include "client/FileSummaryText.h"
#include "client/RunFilePaths.h"
#include "client/TextFit.h"
#include "runfiles/CsvText.h"

#include <QFile>

namespace korvax::client {

namespace {

using runfiles::FileFault;
using runfiles::FileSummary;
using runfiles::FileType;
using runfiles::Kind;

std::string NativePath(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

/// Where the CSV goes: a new file, or standard output.
class CsvOutput {
public:
  CsvOutput(const QString& path, Console& console) : file_(path), console_(console) {}

  bool Open() { return ToConsole() || file_.open(QIODevice::WriteOnly | QIODevice::NewOnly); }

  bool Write(std::string_view text) {
    const auto size = static_cast<int>(text.size());
    if (ToConsole()) {
      console_.Write(QString::fromLatin1(text.data(), size));
      return console_.Fault().isEmpty();
    }
    good_ = good_ && file_.write(text.data(), size) == size && file_.flush();
    return good_;
  }

  bool Good() const { return good_; }

  Ending FailedEnding() const {
    const QString text = file_.isOpen()
                             ? QStringLiteral("%1 can't be written: %2.")
                             : QStringLiteral("%1 can't be created: %2.\nName a file that isn't there yet.");
    return {ExitCode::OutputFailed, text.arg(Harmless(file_.fileName()), file_.errorString())};
  }

private:
  bool ToConsole() const { return file_.fileName().isEmpty(); }

  QFile file_;
  Console& console_;
  bool good_ = true;
};

/// Goes through the files of a request and counts those that aren't as they should be.
class FilesRun {
public:
  explicit FilesRun(Console& console) : console_(console) {}

  Ending Report(const FilesRequest& request) {
    for (const QString& path : Files(request)) {
      const FileSummary summary = runfiles::Summarise(NativePath(path));
      bad_ += summary.fault ? 1 : 0;
      if (request.action == FilesAction::Check) {
        console_.Print(QStringLiteral("%1: %2").arg(Harmless(path), Verdict(summary)));
      } else {
        console_.Print(SummaryLines(path, summary, console_.Size().columns).join(QLatin1Char('\n')));
      }
    }
    return FinalEnding();
  }

  Ending Convert(const FilesRequest& request) {
    const std::vector<Source> sources = Sources(request);
    const Kind kind = CommonKind(sources);
    for (const Source& source : sources) {
      if (source.type.kind != Kind::Unknown && source.type.kind != kind) {
        return {ExitCode::Usage, QStringLiteral("the files are not all of one kind: name some that are.")};
      }
    }
    if (sources.empty()) {
      return FinalEnding();
    }
    CsvOutput output(request.output, console_);
    if (!output.Open() || !output.Write(runfiles::CsvHead(kind))) {
      return output.FailedEnding();
    }
    for (const Source& source : sources) {
      NoteFault(source.path, runfiles::WriteCsv(NativePath(source.path), source.type,
                                                [&output](std::string_view text) { return output.Write(text); }));
    }
    return output.Good() ? FinalEnding() : output.FailedEnding();
  }

private:
  struct Source {
    QString path;
    FileType type;
  };

  std::vector<QString> Files(const FilesRequest& request) {
    std::vector<QString> files;
    for (const QString& path : request.paths) {
      const std::vector<QString> found = RunFilePaths(path);
      if (found.empty()) {
        console_.Complain(QStringLiteral("%1: a folder without run files").arg(Harmless(path)));
        ++bad_;
      }
      files.insert(files.end(), found.begin(), found.end());
    }
    return files;
  }

  std::vector<Source> Sources(const FilesRequest& request) {
    std::vector<Source> sources;
    for (const QString& path : Files(request)) {
      const std::variant<FileType, FileFault> type = runfiles::Recognise(NativePath(path));
      if (std::holds_alternative<FileType>(type)) {
        sources.push_back({path, std::get<FileType>(type)});
      } else {
        NoteFault(path, std::get<FileFault>(type));
      }
    }
    return sources;
  }

  static Kind CommonKind(const std::vector<Source>& sources) {
    for (const Source& source : sources) {
      if (source.type.kind != Kind::Unknown) {
        return source.type.kind;
      }
    }
    return Kind::Unknown;
  }

  void NoteFault(const QString& path, const std::optional<FileFault>& fault) {
    if (fault) {
      console_.Complain(QStringLiteral("%1: %2").arg(Harmless(path), QString::fromStdString(fault->Text())));
      ++bad_;
    }
  }

  Ending FinalEnding() const {
    if (bad_ == 0) {
      return {};
    }
    const QString text = bad_ == 1 ? QStringLiteral("1 file or folder is not as it should be.")
                                   : QStringLiteral("%1 files or folders are not as they should be.").arg(bad_);
    return {ExitCode::BadFile, text};
  }

  Console& console_;
  int bad_ = 0;
};

}  // namespace

Ending RunFiles(const FilesRequest& request, Console& console) {
  FilesRun run(console);
  return request.action == FilesAction::Csv ? run.Convert(request) : run.Report(request);
}

}  // namespace korvax::client
