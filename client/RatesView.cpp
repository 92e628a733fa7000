#include "client/RatesView.h"

#include "client/RatesPicture.h"

namespace korvax::client {

RatesView::RatesView(const ServerAddress& server, RatesRequest request, Console& console)
    : LiveView(server, QueryTarget(request.path), request.refresh, console), request_(std::move(request)) {}

QString RatesView::Begin() {
  return LatestRatesQuery();
}

LiveView::Step RatesView::Take(const QString& answer) {
  Read<RateReading> reading = ReadRates(answer);
  if (!reading.value) {
    return BadAnswerEnding(request_.path, reading.fault, answer);
  }
  reading_ = std::move(*reading.value);
  return Complete{};
}

QStringList RatesView::Lines() const {
  const QString usual =
      reading_.timestamp ? QStringLiteral("timestamp %1").arg(*reading_.timestamp) : QStringLiteral("waiting");
  const QString state = State(usual);
  const Heading heading{request_.path, request_.logarithmic ? QStringLiteral("log · ") + state : state, Notes()};
  const TerminalSize room = Room({});
  return Draw(heading, reading_, {room.columns, room.rows, request_.logarithmic, IsInPlace()});
}

QStringList RatesView::Notes() const {
  QStringList notes = StaleNotes();
  if (!reading_.timestamp) {
    notes << QStringLiteral("No record has arrived yet: check that the source of rates runs and is connected.");
  } else if (reading_.channels.empty()) {
    notes << QStringLiteral("The latest record has no channels.");
  }
  return notes;
}

}  // namespace korvax::client
