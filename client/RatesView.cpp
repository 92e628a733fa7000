#include "client/RatesView.h"

#include "client/RatesPicture.h"

namespace korvax::client {

RatesView::RatesView(const ServerAddress& server, RatesRequest request, Console& console)
    : LiveView(server, QueryTarget(request.path), request.refresh, console), request_(std::move(request)) {}

QString RatesView::Begin() {
  return LatestRatesQuery();
}

LiveView::Step RatesView::Take(const QString& answer) {
  Read<RateRecord> record = ReadRates(answer);
  if (!record.value) {
    return BadAnswerEnding(request_.path, record.fault, answer);
  }
  record_ = std::move(*record.value);
  return Complete{};
}

QStringList RatesView::Lines() const {
  const QString usual =
      record_.timestamp ? QStringLiteral("timestamp %1").arg(*record_.timestamp) : QStringLiteral("waiting");
  const QString state = State(usual);
  const Heading heading{request_.path, request_.logarithmic ? QStringLiteral("log · ") + state : state, Notes()};
  const TerminalSize room = Room({});
  return Draw(heading, record_, {room.columns, room.rows, request_.logarithmic, IsInPlace()});
}

QStringList RatesView::Notes() const {
  QStringList notes = StaleNotes();
  if (!record_.timestamp) {
    notes << QStringLiteral("No record has arrived yet: check that the source of rates runs and is connected.");
  } else if (record_.channels.empty()) {
    notes << QStringLiteral("The latest record has no channels.");
  }
  return notes;
}

}  // namespace korvax::client
