#include "client/RunSummary.h"

#include "client/TextFit.h"
#include "framework/JsonText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>
#include <map>

namespace korvax::client {

namespace {

constexpr qint64 longestLine = 16 << 20;

bool IsNameInFolder(const QString& name) {
  return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
         !name.contains(QLatin1Char('/')) && !name.contains(QChar(u'\0'));
}

std::optional<quint64> CountOf(const QJsonValue& value) {
  const double number = value.toDouble(-1);
  return number >= 0 && number <= 9007199254740992 ? std::optional(static_cast<quint64>(number)) : std::nullopt;
}

/// Takes the lines of a summary one by one.
class SummaryReader {
public:
  void Take(const QByteArray& line) {
    ++line_;
    const QJsonDocument document = ParseJson(line);
    if (!document.isObject()) {
      Refuse(line.endsWith('\n') ? QStringLiteral("is no JSON object") : QStringLiteral("is cut off"));
    } else {
      TakeEvent(document.object());
    }
  }

  void Refuse(const QString& what) {
    summary_.faults << QStringLiteral("line %1 %2").arg(QString::number(line_), what);
  }

  const RunSummary& Summary() const { return summary_; }

private:
  void TakeEvent(const QJsonObject& object) {
    const QString event = object.value(QStringLiteral("event")).toString();
    const QString time = object.value(QStringLiteral("time")).toString();
    if (event == QLatin1String("start")) {
      summary_.runId = object.value(QStringLiteral("run_id")).toString();
      summary_.started = time;
      summary_.ended = false;
    } else if (event == QLatin1String("stop")) {
      summary_.ended = true;
      summary_.stopped = time;
      summary_.ledger = object.value(QStringLiteral("ledger"));
    } else if (event == QLatin1String("restart")) {
      summary_.ended = false;
    } else if (event == QLatin1String("open") || event == QLatin1String("close")) {
      TakeFile(object, event == QLatin1String("close"));
    }
  }

  void TakeFile(const QJsonObject& object, bool ended) {
    RecordedFile file{object.value(QStringLiteral("file")).toString(),
                      object.value(QStringLiteral("block")).toString(),
                      ended,
                      {},
                      {},
                      {},
                      {}};
    if (!IsNameInFolder(file.name)) {
      Refuse(QStringLiteral("names no file of this folder: \"%1\"").arg(Harmless(file.name)));
      return;
    }
    if (ended) {
      file.bytes = CountOf(object.value(QStringLiteral("bytes")));
      file.records = CountOf(object.value(QStringLiteral("records")));
      file.checksum = object.value(QStringLiteral("xxh128")).toString();
      const QJsonValue problem = object.value(QStringLiteral("problem"));
      file.problem = problem.isUndefined() ? std::nullopt : std::optional(problem.toString());
    }
    // The last word about a name counts: a file may be opened again and written anew.
    const auto known = index_.find(file.name);
    if (known != index_.end()) {
      summary_.files[known->second] = file;
    } else {
      index_.emplace(file.name, summary_.files.size());
      summary_.files.push_back(file);
    }
  }

  RunSummary summary_;
  std::map<QString, std::size_t> index_;
  int line_ = 0;
};

}  // namespace

Read<RunSummary> ReadRunSummary(const QString& folder) {
  QFile file(QDir(folder).filePath(runSummaryName));
  if (!QFileInfo(file).isFile()) {
    return {{}, QStringLiteral("no %1").arg(runSummaryName)};
  }
  if (!file.open(QIODevice::ReadOnly)) {
    return {{}, QStringLiteral("%1 can't be read: %2").arg(runSummaryName, file.errorString())};
  }
  SummaryReader reader;
  while (!file.atEnd()) {
    // No more than there is: Qt takes memory for all that it is asked for.
    const QByteArray line = file.readLine(std::min(longestLine, file.bytesAvailable() + 1));
    if (line.isEmpty()) {
      return {{}, QStringLiteral("%1 can't be read: %2").arg(runSummaryName, file.errorString())};
    }
    reader.Take(line);
  }
  return {reader.Summary(), {}};
}

}  // namespace korvax::client
