#include "client/FileSummaryText.h"

#include "client/Bar.h"
#include "client/Table.h"
#include "client/TextFit.h"

#include <QDateTime>

namespace korvax::client {

namespace {

using runfiles::FileSummary;
using runfiles::FileType;
using runfiles::Form;
using runfiles::Kind;

constexpr int widestBar = 40;
constexpr int smallestBar = 4;
const QString indent = QStringLiteral("  ");

QString KindText(Kind kind) {
  switch (kind) {
    case Kind::List:
      return QStringLiteral("list file");
    case Kind::Waves:
      return QStringLiteral("wave file");
    case Kind::Rates:
      return QStringLiteral("rate file");
    case Kind::Unknown:
      break;
  }
  return QStringLiteral("run file without a record that tells its kind");
}

QString FormText(Form form) {
  switch (form) {
    case Form::Binary:
      return QStringLiteral("binary");
    case Form::Csv:
      return QStringLiteral("CSV");
    case Form::Json:
      break;
  }
  return QStringLiteral("JSON");
}

QString TimeText(quint64 seconds) {
  // Later times have no four-digit year: a damaged file.
  constexpr quint64 endOfYears = 253'402'300'800;
  if (seconds >= endOfYears) {
    return QString::number(seconds) + QStringLiteral(" s after 1970");
  }
  return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(seconds), Qt::UTC)
      .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'"));
}

QString PerSecondText(const FileSummary& summary, quint64 count) {
  const std::optional<double> rate = summary.PerSecond(count);
  return rate ? RateText(*rate) : QStringLiteral("-");
}

QString SpanText(const FileSummary& summary) {
  const QString unit = summary.type->kind == Kind::Rates ? QStringLiteral("ms") : QStringLiteral("ns");
  return QStringLiteral("%1 s, from %2 to %3 %4")
      .arg(QString::number(summary.Seconds(), 'g', 9))
      .arg(summary.earliest)
      .arg(summary.latest)
      .arg(unit);
}

void AddRecordRows(const FileSummary& summary, Table& table) {
  if (summary.records == 0) {
    return;
  }
  const bool isList = summary.type->kind == Kind::List;
  const std::size_t channels = isList ? summary.perChannel.size() : summary.channels;
  const QString more = summary.onFurtherChannels > 0 ? QStringLiteral("more than %1") : QStringLiteral("%1");
  table.Add({QStringLiteral("channels"), more.arg(channels)});
  table.Add({QStringLiteral("time"), SpanText(summary)});
  table.Add({QStringLiteral("rate"), PerSecondText(summary, summary.records)});
  table.Add({QStringLiteral("first"), QString::fromStdString(summary.first)});
  table.Add({QStringLiteral("last"), QString::fromStdString(summary.last)});
}

QStringList Figures(const FileSummary& summary) {
  const FileType& type = *summary.type;
  Table table({QStringLiteral("kind"), QStringLiteral("%1, %2").arg(KindText(type.kind), FormText(type.form))}, 2);
  if (summary.created) {
    table.Add({QStringLiteral("created"), TimeText(*summary.created)});
  }
  const bool isList = type.kind == Kind::List;
  table.Add({isList ? QStringLiteral("events") : QStringLiteral("records"), QString::number(summary.records)});
  AddRecordRows(summary, table);
  return table.Lines();
}

QStringList Channels(const FileSummary& summary, int width) {
  if (summary.perChannel.empty()) {
    return {};
  }
  Table table({QStringLiteral("channel"), QStringLiteral("events"), QStringLiteral("rate")}, 0);
  quint64 largest = 0;
  for (const auto& [channel, events] : summary.perChannel) {
    table.Add({QString::number(channel), QString::number(events), PerSecondText(summary, events)});
    largest = std::max<quint64>(largest, events);
  }
  QStringList lines = table.Lines();
  const int begin = static_cast<int>(std::ranges::max(lines, {}, &QString::size).size()) + indent.size();
  const int room = std::min(widestBar, width - begin);
  int line = 1;
  for (const auto& [channel, events] : summary.perChannel) {
    if (room >= smallestBar) {
      const QString bar = Bar(static_cast<double>(events), static_cast<double>(largest), room, false);
      lines[line] = lines[line].leftJustified(begin) + bar;
    }
    ++line;
  }
  if (summary.onFurtherChannels > 0) {
    lines.append(QStringLiteral("%1 events on further channels").arg(summary.onFurtherChannels));
  }
  return lines;
}

}  // namespace

QString CountedRecords(quint64 count) {
  return QString::fromStdString(runfiles::Counted(count, "record"));
}

QString Verdict(const FileSummary& summary) {
  return summary.fault ? QString::fromStdString(summary.fault->Text())
                       : QStringLiteral("good, %1").arg(CountedRecords(summary.records));
}

QStringList SummaryLines(const QString& path, const FileSummary& summary, int width) {
  QStringList lines{Harmless(path)};
  QStringList body;
  if (summary.type) {
    body += Figures(summary);
    body += Channels(summary, width - indent.size());
  }
  body += Verdict(summary);
  for (const QString& line : body) {
    lines.append(indent + line);
  }
  return lines;
}

}  // namespace korvax::client
