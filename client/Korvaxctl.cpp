#include "client/Korvaxctl.h"

#include "client/BlocksCommand.h"
#include "client/CheckCommand.h"
#include "client/CommandLine.h"
#include "client/FilesCommand.h"
#include "client/HeatMapView.h"
#include "client/HvCommand.h"
#include "client/JsonAnswers.h"
#include "client/LedgerCommand.h"
#include "client/QueryClient.h"
#include "client/RateQueries.h"
#include "client/RatesView.h"
#include "client/RecoverCommand.h"
#include "client/RunCommand.h"
#include "client/ScopeView.h"
#include "client/SinkQueries.h"
#include "client/SpectrumView.h"
#include "client/VerifyCommand.h"

namespace korvax::client {

namespace {

/// Runs one request. What the user asked for goes to the console, what went wrong into the ending.
class Runner {
public:
  Runner(const ServerAddress& server, Console& console) : server_(server), console_(console) {}

  Ending operator()(const QueryRequest& request) const {
    const QueryTarget target(request.target);
    if (!target.Message(request.json)) {
      const QString text = QStringLiteral(
          "the query is not a JSON object: %1\n"
          "Write it in single quotes, as in korvaxctl query %2 '{\"args\":[{\"cmd\":\"get_data\"}]}'");
      return {ExitCode::Usage, text.arg(request.json, request.target)};
    }
    QueryClient client(server_, target);
    const Reply reply = client.AskAndWait(request.json);
    if (!reply.Failed()) {
      console_.Print(reply.answer);
    } else if (reply.ending.code == ExitCode::EmptyAnswer && IsThere(target)) {
      return UnknownQueryEnding(request.target);
    }
    return reply.ending;
  }

  Ending operator()(const BlocksRequest& request) const { return ShowBlocks(server_, request, console_); }

  Ending operator()(const SinkRequest& request) const {
    const QueryTarget target(request.path);
    const Reply reply = QueryClient(server_, target).AskAndWait(QueryFor(request.action));
    if (reply.Failed()) {
      return reply.ending;
    }
    if (request.action == SinkAction::Status) {
      return PrintStatus(request, reply.answer);
    }
    const QString fault = ObedienceFault(reply.answer);
    if (!fault.isEmpty()) {
      return BadAnswerEnding(request.path, fault, reply.answer);
    }
    console_.Print(request.path + DoneText(request.action));
    return {};
  }

  Ending operator()(const SpectrumRequest& request) const {
    return Told(request.path, SpectrumView(server_, request, console_).Run());
  }
  Ending operator()(const HeatMapRequest& request) const {
    return Told(request.path, HeatMapView(server_, request, console_).Run());
  }
  Ending operator()(const ScopeRequest& request) const { return ScopeView(server_, request, console_).Run(); }
  Ending operator()(const RatesRequest& request) const { return RatesView(server_, request, console_).Run(); }
  Ending operator()(const RunRequest& request) const { return ControlRun(server_, request, console_); }
  Ending operator()(const HvRequest& request) const { return RunHv(server_, request, console_); }
  Ending operator()(const LedgerRequest& request) const { return ShowLedger(server_, request, console_); }
  Ending operator()(const FilesRequest& request) const { return RunFiles(request, console_); }
  Ending operator()(const VerifyRequest& request) const { return VerifyRuns(request, console_); }
  Ending operator()(const RecoverRequest& request) const { return RecoverFile(request, console_); }
  Ending operator()(const CheckRequest& request) const { return RunCheck(request, console_); }

private:
  /// Tells a wrong query from a wrong path: whatever counts answers for its status, a rate counter for its
  /// rates. High-voltage blocks aren't asked: no answer may mean that they obeyed.
  bool IsThere(const QueryTarget& target) const {
    QueryClient client(server_, target);
    return target.IsFullPath() &&
           (!client.AskAndWait(StatusQuery()).Failed() || !client.AskAndWait(LatestRatesQuery()).Failed());
  }

  /// How a view of the counts of a block ended; no answer to their query may mean that it holds other counts.
  Ending Told(const QString& path, const Ending& ending) const {
    const bool isOther = ending.code == ExitCode::EmptyAnswer && IsThere(QueryTarget(path));
    return isOther ? OtherKindEnding(path) : ending;
  }

  static QString QueryFor(SinkAction action) {
    switch (action) {
      case SinkAction::Start:
        return RunQuery(true);
      case SinkAction::Stop:
        return RunQuery(false);
      case SinkAction::Reset:
        return ResetQuery();
      case SinkAction::Status:
        break;
    }
    return StatusQuery();
  }

  static QString DoneText(SinkAction action) {
    switch (action) {
      case SinkAction::Start:
        return QStringLiteral(" is counting.");
      case SinkAction::Stop:
        return QStringLiteral(" has stopped counting.");
      default:
        return QStringLiteral(" is reset.");
    }
  }

  Ending PrintStatus(const SinkRequest& request, const QString& answer) const {
    const Read<bool> counting = ReadStatus(answer);
    if (!counting.value) {
      return BadAnswerEnding(request.path, counting.fault, answer);
    }
    console_.Print(*counting.value ? QStringLiteral("freerun") : QStringLiteral("idle"));
    return {};
  }

  const ServerAddress& server_;
  Console& console_;
};

}  // namespace

ExitCode RunKorvaxctl(const std::vector<std::string>& words, Console& console) {
  const std::variant<Invocation, Ending> read = ParseCommandLine(words);
  Ending ending;
  if (const auto* invocation = std::get_if<Invocation>(&read)) {
    ending = std::visit(Runner(invocation->server, console), invocation->request);
  } else {
    ending = std::get<Ending>(read);
    if (ending.code == ExitCode::Ok) {
      console.Print(ending.text);
    }
  }
  if (!console.Fault().isEmpty()) {
    ending = {ExitCode::OutputFailed, QStringLiteral("standard output can't be written: ") + console.Fault()};
  }
  if (ending.code != ExitCode::Ok) {
    console.Complain(ending.text);
  }
  return ending.code;
}

}  // namespace korvax::client
