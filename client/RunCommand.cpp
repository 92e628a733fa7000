#include "client/RunCommand.h"

#include "client/JsonAnswers.h"
#include "client/QueryClient.h"
#include "client/RunQueries.h"
#include "client/Table.h"
#include "client/TextFit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvax::client {

namespace {

using RunInfos = std::vector<RunInfo>;

QString StatusWord(DumpStatus status) {
  static const std::array words{QStringLiteral("stopped"), QStringLiteral("recording"), QStringLiteral("paused")};
  return words[static_cast<std::size_t>(status)];
}

QString SizeText(quint64 bytes) {
  static const std::array units{"B", "kB", "MB", "GB", "TB"};
  double shown = static_cast<double>(bytes);
  std::size_t unit = 0;
  while (shown >= 1000 && unit + 1 < units.size()) {
    shown /= 1000;
    ++unit;
  }
  return QString::number(shown, 'f', unit == 0 ? 0 : 1) + QLatin1Char(' ') + QLatin1String(units[unit]);
}

void PrintInfo(const RunInfos& infos, Console& console) {
  if (infos.empty()) {
    console.Print(QStringLiteral("The server has no dumper: no block of its configuration records events."));
    return;
  }
  Table table({QStringLiteral("dumper"), QStringLiteral("status"), QStringLiteral("run"), QStringLiteral("events"),
               QStringLiteral("rate"), QStringLiteral("running time"), QStringLiteral("file size")},
              3);
  for (const RunInfo& info : infos) {
    table.Add({info.dumper, StatusWord(info.status), info.id, QString::number(info.events),
               RateText(info.eventRate), QString::number(info.runningTime, 'f', 1) + QStringLiteral(" s"),
               SizeText(info.usedSpace)});
  }
  console.Print(table.Lines().join(QLatin1Char('\n')));
}

/// One line; empty when nothing is missing.
QString LossesText(const QString& dumper, const RunLosses& losses) {
  QStringList parts;
  const auto add = [&parts](quint64 count, const QString& what) {
    if (count != 0) {
      parts << QString::number(count) + QLatin1Char(' ') + what;
    }
  };
  add(losses.failed, QStringLiteral("could not be written"));
  add(losses.dropped, QStringLiteral("dropped, its queue was full"));
  add(losses.overwritten, QStringLiteral("overwritten, in a file that was used again"));
  add(losses.discarded, QStringLiteral("discarded, in a pause or at a stop"));
  return parts.isEmpty() ? QString()
                         : Harmless(dumper) + QStringLiteral(" has not: ") + parts.join(QStringLiteral("; "));
}

Ending Refusal(const QString& text) {
  return {ExitCode::Refused, text};
}

/// Why the action would spoil something, seen what the dumpers are doing; Ok if it wouldn't.
Ending Objection(RunAction action, const RunInfos& infos) {
  const auto isStopped = [](const RunInfo& info) { return info.status == DumpStatus::Stopped; };
  if (action == RunAction::Start) {
    const auto busy = std::ranges::find_if_not(infos, isStopped);
    const QString text = QStringLiteral(
        "the dumper \"%1\" is %2, run \"%3\": a run started over it would go on in its open file.\n"
        "Stop it first with korvaxctl run stop, or start with --force all the same.");
    return busy == infos.end()
               ? Ending{}
               : Refusal(text.arg(Harmless(busy->dumper), StatusWord(busy->status), Harmless(busy->id)));
  }
  if (action == RunAction::Pause && !infos.empty() && std::ranges::all_of(infos, isStopped)) {
    return Refusal(
        QStringLiteral("no dumper is recording: there is nothing to pause.\n"
                       "Start a run first with korvaxctl run start, or pause with --force all the same."));
  }
  if (action == RunAction::Restart) {
    const auto stopped = std::ranges::find_if(infos, isStopped);
    const QString text = QStringLiteral(
        "the dumper \"%1\" is stopped: restarted, it would write over the files of its last run.\n"
        "Start a new run with korvaxctl run start, or restart with --force all the same.");
    return stopped == infos.end() ? Ending{} : Refusal(text.arg(Harmless(stopped->dumper)));
  }
  return {};
}

QString DoneText(const RunRequest& request) {
  switch (request.action) {
    case RunAction::Start:
      return QStringLiteral("Run \"%1\" is started.").arg(request.id);
    case RunAction::Pause:
      return QStringLiteral("The run is paused.");
    case RunAction::Restart:
      return QStringLiteral("The run goes on.");
    default:
      return QStringLiteral("The run is stopped.");
  }
}

Ending ExistsEnding(const QString& id) {
  const QString text = QStringLiteral(
      "a run \"%1\" exists already: the server's storage folder holds a folder of that name.\n"
      "Choose another id.");
  return Refusal(text.arg(id));
}

/// The steps of one request, on one connection.
class RunControl {
public:
  RunControl(const ServerAddress& server, const RunRequest& request, Console& console)
      : server_(server), request_(request), console_(console), client_(server, QueryTarget(runBlock)) {}

  Ending Run() {
    if (request_.action == RunAction::Stop || request_.force) {
      return Command();
    }
    const Reply reply = client_.AskAndWait(RunInfoQuery());
    if (reply.Failed()) {
      return reply.ending;
    }
    const Read<RunInfos> infos = ReadRunInfo(reply.answer);
    if (!infos.value) {
      return BadAnswerEnding(runBlock, infos.fault, reply.answer);
    }
    if (request_.action == RunAction::Info) {
      PrintInfo(*infos.value, console_);
      PrintLosses(*infos.value);
      return {};
    }
    const Ending objection = Objection(request_.action, *infos.value);
    return objection.code == ExitCode::Ok ? Command() : objection;
  }

private:
  /// The dumpers are asked one by one. One that doesn't answer is passed over: the table stands.
  void PrintLosses(const RunInfos& infos) const {
    for (const RunInfo& info : infos) {
      const Reply reply = QueryClient(server_, QueryTarget(info.dumper)).AskAndWait(RunLossesQuery());
      const Read<RunLosses> losses = reply.Failed() ? Read<RunLosses>() : ReadRunLosses(reply.answer);
      const QString line = losses.value ? LossesText(info.dumper, *losses.value) : QString();
      if (!line.isEmpty()) {
        console_.Print(line);
      }
    }
  }

  Ending Command() {
    const Reply reply = client_.AskAndWait(RunControlQuery(request_.action, request_.id));
    if (reply.Failed()) {
      return reply.ending;
    }
    if (request_.action == RunAction::Start && SaysExistingFolder(reply.answer)) {
      return ExistsEnding(request_.id);
    }
    const QString fault = ObedienceFault(reply.answer);
    if (!fault.isEmpty()) {
      return BadAnswerEnding(runBlock, fault, reply.answer);
    }
    console_.Print(DoneText(request_));
    return {};
  }

  const ServerAddress& server_;
  const RunRequest& request_;
  Console& console_;
  QueryClient client_;
};

}  // namespace

Ending ControlRun(const ServerAddress& server, const RunRequest& request, Console& console) {
  return RunControl(server, request, console).Run();
}

}  // namespace korvax::client
