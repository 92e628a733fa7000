#include "client/LedgerCommand.h"

#include "client/LedgerTable.h"
#include "client/LedgerVerdict.h"
#include "client/QueryClient.h"
#include "client/RunQueries.h"

#include <QThread>

namespace korvax::client {

namespace {

constexpr int readings = 5;
constexpr unsigned long millisecondsBetween = 200;

struct Reading {
  QString answer;
  Ledger ledger;
  LedgerVerdict verdict;
};

/// A reading, or why there is none.
std::variant<Reading, Ending> ReadOnce(QueryClient& client) {
  const Reply reply = client.AskAndWait(LedgerQuery());
  if (reply.Failed()) {
    return reply.ending;
  }
  const Read<Ledger> ledger = ReadLedger(reply.answer);
  if (!ledger.value) {
    return BadAnswerEnding(runBlock, ledger.fault, reply.answer);
  }
  return Reading{reply.answer, *ledger.value, Judge(*ledger.value)};
}

/// The first reading at rest; without one the last that balances, or else the last.
std::variant<Reading, Ending> ReadAtRest(QueryClient& client) {
  std::variant<Reading, Ending> best = ReadOnce(client);
  for (int again = 1; again < readings; ++again) {
    const auto* kept = std::get_if<Reading>(&best);
    if (kept == nullptr || kept->verdict.Settled()) {
      break;
    }
    QThread::msleep(millisecondsBetween);
    std::variant<Reading, Ending> next = ReadOnce(client);
    const auto* later = std::get_if<Reading>(&next);
    if (later == nullptr || later->verdict.Balanced() || !kept->verdict.Balanced()) {
      best = std::move(next);
    }
  }
  return best;
}

Ending LedgerEnding(const LedgerVerdict& verdict) {
  if (!verdict.Balanced()) {
    return {ExitCode::NotBalanced, QStringLiteral("the account of the records doesn't balance.")};
  }
  if (!verdict.readable) {
    return {ExitCode::BadAnswer, QStringLiteral("figures of the account are missing or are no whole numbers.\n"
                                                "Check that server and korvaxctl are of the same version.")};
  }
  return {};
}

}  // namespace

Ending ShowLedger(const ServerAddress& server, const LedgerRequest& request, Console& console) {
  QueryClient client(server, QueryTarget(runBlock));
  const std::variant<Reading, Ending> read = ReadAtRest(client);
  if (const auto* ending = std::get_if<Ending>(&read)) {
    return *ending;
  }
  const Reading& reading = std::get<Reading>(read);
  if (request.json) {
    console.Print(reading.answer);
  } else {
    const QStringList lines = LedgerLines(reading.ledger, console.HasColours());
    console.Print(lines.join(QLatin1Char('\n')));
    console.Print(ClosingLine(reading.verdict, console.HasColours()));
  }
  return LedgerEnding(reading.verdict);
}

}  // namespace korvax::client
