#include "client/RunQueries.h"

#include "client/JsonAnswers.h"
#include "client/TextScanner.h"

#include <array>
#include <cmath>
#include <utility>

namespace korvax::client {

namespace {

QString Command(RunAction action) {
  switch (action) {
    case RunAction::Start:
      return QStringLiteral("start_dump");
    case RunAction::Stop:
      return QStringLiteral("stop_dump");
    case RunAction::Pause:
      return QStringLiteral("pause_dump");
    case RunAction::Restart:
      return QStringLiteral("restart_dump");
    case RunAction::Info:
      break;
  }
  return QStringLiteral("get_run_info");
}

/// The texts of an entry, in their order.
using Texts = std::array<QString, 7>;

/// What stands before each of the texts, and after the last. An id may be any text, quotes and commas included,
/// so nothing but the next key ends it.
const std::array<QString, 8> marks{QStringLiteral("{\"status\":"),        QStringLiteral(",\"name\": \""),
                                   QStringLiteral("\",\"event_rate\":"),  QStringLiteral(",\"id\":"),
                                   QStringLiteral(",\"stored_events\":"), QStringLiteral(",\"running_time\":"),
                                   QStringLiteral(",\"used_space\":"),    QStringLiteral("}")};

/// The number of the mark that isn't there; none when all are.
std::optional<std::size_t> ReadTexts(TextScanner& scanner, Texts& texts) {
  if (!scanner.Skip(marks.front())) {
    return 0;
  }
  for (std::size_t index = 0; index < texts.size(); ++index) {
    const std::optional<QString> text = scanner.Until(marks[index + 1]);
    if (!text) {
      return index + 1;
    }
    texts[index] = *text;
  }
  return std::nullopt;
}

Read<RunInfo> ToRunInfo(const Texts& texts) {
  RunInfo info;
  QString bad;
  bool good = false;
  const auto check = [&](const char* key, bool fits) {
    if (bad.isEmpty() && !(good && fits)) {
      bad = QLatin1String(key);
    }
  };
  const int status = texts[0].toInt(&good);
  check("status", status >= 0 && status <= 2);
  info.status = static_cast<DumpStatus>(status);
  info.dumper = texts[1];
  info.eventRate = texts[2].toDouble(&good);
  check("event_rate", info.eventRate >= 0);
  info.id = texts[3];
  info.events = texts[4].toULongLong(&good);
  check("stored_events", true);
  info.runningTime = texts[5].toDouble(&good);
  check("running_time", info.runningTime >= 0);
  info.usedSpace = texts[6].toULongLong(&good);
  check("used_space", true);
  if (!bad.isEmpty()) {
    return {{}, QStringLiteral("has a bad \"%1\"").arg(bad)};
  }
  return {info, {}};
}

Read<RunInfo> ReadEntry(TextScanner& scanner) {
  Texts texts;
  const std::optional<std::size_t> missing = ReadTexts(scanner, texts);
  if (missing) {
    return {{}, QStringLiteral("has no %1 where it should stand").arg(marks[*missing])};
  }
  return ToRunInfo(texts);
}

}  // namespace

QString RunInfoQuery() {
  return RunControlQuery(RunAction::Info, {});
}

QString RunControlQuery(RunAction action, const QString& id) {
  QJsonObject query{{QStringLiteral("cmd"), Command(action)}};
  if (action == RunAction::Start) {
    query.insert(QStringLiteral("run_id"), id);
  }
  return QueryText(query);
}

QString RunLossesQuery() {
  return QueryText({{QStringLiteral("cmd"), QStringLiteral("get_dump_counts")}});
}

Read<RunLosses> ReadRunLosses(const QString& answer) {
  const Read<QJsonObject> response = ReadResponse(answer);
  if (!response.value) {
    return {{}, response.fault};
  }
  RunLosses losses;
  const std::array<std::pair<const char*, quint64*>, 4> counts{{{"discarded", &losses.discarded},
                                                                {"failed", &losses.failed},
                                                                {"dropped", &losses.dropped},
                                                                {"overwritten", &losses.overwritten}}};
  for (const auto& [key, count] : counts) {
    const double number = response.value->value(QLatin1String(key)).toDouble(-1);
    if (!(number >= 0 && number < 1e19)) {
      return {{}, QStringLiteral("has a bad \"%1\"").arg(QLatin1String(key))};
    }
    *count = static_cast<quint64>(number);
  }
  return {losses, {}};
}

Read<std::vector<RunInfo>> ReadRunInfo(const QString& answer) {
  TextScanner scanner(answer);
  std::vector<RunInfo> entries;
  if (!scanner.Skip(QStringLiteral("["))) {
    return {{}, QStringLiteral("it is not an array")};
  }
  if (!scanner.Skip(QStringLiteral("]"))) {
    do {
      const Read<RunInfo> entry = ReadEntry(scanner);
      if (!entry.value) {
        return {{}, QStringLiteral("its entry %1 %2").arg(entries.size()).arg(entry.fault)};
      }
      entries.push_back(*entry.value);
    } while (scanner.Skip(QStringLiteral(",")));
    if (!scanner.Skip(QStringLiteral("]"))) {
      return {{}, QStringLiteral("it has no end")};
    }
  }
  if (!scanner.AtEnd()) {
    return {{}, QStringLiteral("something stands behind its end")};
  }
  return {entries, {}};
}

bool SaysExistingFolder(const QString& answer) {
  const Read<QJsonArray> array = ReadArray(answer);
  return array.value && array.value->size() == 1 &&
         array.value->first().toObject().value(QStringLiteral("response")) ==
             QJsonValue(QStringLiteral("Existing Folder"));
}

}  // namespace korvax::client
