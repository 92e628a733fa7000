#include "client/HeatMapView.h"

namespace korvax::client {

HeatMapView::HeatMapView(const ServerAddress& server, HeatMapRequest request, Console& console)
    : CountingView(server, request.path, request.refresh, console),
      request_(std::move(request)),
      coloured_(request_.colours && console.HasColours()) {
  const bool isPosition = request_.source == MapSource::Position;
  view_.columnsKey = isPosition ? QStringLiteral("positions") : QStringLiteral("x_positions");
}

QString HeatMapView::CountsQuery() const {
  return GridQuery(request_.source);
}

Ending HeatMapView::TakeCounts(const QString& answer) {
  Read<CountGrid> grid = ReadGrid(answer);
  if (!grid.value) {
    return BadAnswerEnding(request_.path, grid.fault, answer);
  }
  taken_ = std::move(*grid.value);
  return {};
}

void HeatMapView::Accept() {
  view_.rate = RateOf(IsEmptiedByReading() ? 0 : Total(view_.grid.counts), Total(taken_.counts));
  view_.grid = std::move(taken_);
}

QStringList HeatMapView::Lines() const {
  QStringList words;
  if (IsEmptiedByReading()) {
    words << QStringLiteral("immediate");
  }
  if (request_.logarithmic) {
    words << QStringLiteral("log");
  }
  const TerminalSize room = Room(request_.size);
  return Draw(TitleOf(words, false), view_, {request_.logarithmic, coloured_},
              {room.columns, room.rows, IsInPlace()});
}

}  // namespace korvax::client
