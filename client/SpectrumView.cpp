#include "client/SpectrumView.h"

namespace korvax::client {

SpectrumView::SpectrumView(const ServerAddress& server, SpectrumRequest request, Console& console)
    : CountingView(server, request.path, request.refresh, console), request_(std::move(request)) {}

QString SpectrumView::CountsQuery() const {
  return DataQuery(request_.channels);
}

Ending SpectrumView::TakeCounts(const QString& answer) {
  Read<std::vector<Counts>> data = ReadData(answer);
  const std::size_t asked = request_.channels.size();
  if (data.value && data.value->size() < asked) {
    // Channels count from 0 and come in ascending order, so it is the last ones that don't exist.
    return NoChannelEnding(request_.path, request_.channels[data.value->size()]);
  }
  if (data.value && data.value->size() > asked) {
    data.fault = QStringLiteral("it has more channels than the %1 asked for").arg(asked);
  }
  if (!data.fault.isEmpty()) {
    return BadAnswerEnding(request_.path, data.fault, answer);
  }
  taken_ = std::move(*data.value);
  return {};
}

void SpectrumView::Accept() {
  std::vector<ChannelView> views;
  for (std::size_t index = 0; index < taken_.size(); ++index) {
    const std::optional<double> rate = RateOfChannel(index, taken_[index]);
    views.push_back({request_.channels[index], std::move(taken_[index]), rate});
  }
  taken_.clear();
  channels_ = std::move(views);
}

/// In the bins shown.
std::optional<double> SpectrumView::RateOfChannel(std::size_t index, const Counts& now) const {
  if (index >= channels_.size()) {
    return std::nullopt;
  }
  return RateOf(Total(Shown(channels_[index].counts, request_.range)), Total(Shown(now, request_.range)));
}

QStringList SpectrumView::Lines() const {
  const QStringList words = request_.logarithmic ? QStringList{QStringLiteral("log")} : QStringList{};
  const TerminalSize room = Room(request_.size);
  PictureOptions options;
  options.width = room.columns;
  options.height = room.rows;
  options.logarithmic = request_.logarithmic;
  options.range = request_.range;
  options.shareHeight = IsInPlace();
  return Draw({TitleOf(words, request_.countsWhenIdle), channels_}, options);
}

}  // namespace korvax::client
