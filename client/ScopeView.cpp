#include "client/ScopeView.h"

#include "client/JsonAnswers.h"

#include <algorithm>

namespace korvax::client {

ScopeView::ScopeView(const ServerAddress& server, ScopeRequest request, Console& console)
    : LiveView(server, QueryTarget(request.name), request.refresh, console), request_(std::move(request)) {}

/// All channels, or as long as it isn't known how many traces each has, the last.
std::span<const int> ScopeView::Asked() const {
  const std::span<const int> all(request_.channels);
  return tracesPerChannel_ == 0 ? all.last(1) : all;
}

QString ScopeView::Begin() {
  enabled_ = false;
  return EnableQuery(Asked());
}

LiveView::Step ScopeView::Take(const QString& answer) {
  if (enabled_) {
    return TakeTraces(answer);
  }
  const QString fault = ObedienceFault(answer);
  if (!fault.isEmpty()) {
    return Void(BadAnswerEnding(request_.name, fault, answer));
  }
  enabled_ = true;
  return TracesQuery();
}

LiveView::Step ScopeView::TakeTraces(const QString& answer) {
  Read<std::vector<Trace>> traces = ReadTraces(answer);
  if (!traces.value) {
    return Void(BadAnswerEnding(request_.name, traces.fault, answer));
  }
  const std::span<const int> asked = Asked();
  if (tracesPerChannel_ == 0) {
    if (traces.value->empty()) {
      return Void(NoChannelEnding(request_.name, asked.back()));
    }
    tracesPerChannel_ = traces.value->size();
  }
  if (asked.size() < request_.channels.size()) {
    return Begin();
  }
  return Accept(std::move(*traces.value), answer);
}

LiveView::Step ScopeView::Accept(std::vector<Trace> traces, const QString& answer) {
  const std::size_t due = tracesPerChannel_ * request_.channels.size();
  if (traces.size() != due) {
    const QString fault =
        QStringLiteral("it has %1 traces, not %2; another client may have enabled other channels");
    return Void(BadAnswerEnding(request_.name, fault.arg(traces.size()).arg(due), answer));
  }
  channels_.clear();
  for (std::size_t index = 0; index < request_.channels.size(); ++index) {
    const auto first = traces.begin() + static_cast<std::ptrdiff_t>(index * tracesPerChannel_);
    const auto end = first + static_cast<std::ptrdiff_t>(tracesPerChannel_);
    ChannelTraces channel{std::move(*first), {std::move_iterator(first + 1), std::move_iterator(end)}};
    channels_.push_back({request_.channels[index], std::move(channel)});
  }
  return Complete{};
}

/// What was known of the oscilloscope may be of a server that runs no more.
LiveView::Step ScopeView::Void(const Ending& reason) {
  tracesPerChannel_ = 0;
  return reason;
}

QStringList ScopeView::Lines() const {
  const TerminalSize room = Room(request_.size);
  const Heading heading{request_.name, State({}), Notes()};
  return Draw({heading, channels_}, {room.columns, room.rows, IsInPlace()});
}

QStringList ScopeView::Notes() const {
  const auto isZero = [](double sample) { return sample == 0; };
  const auto isFlat = [&](const ScopeChannel& each) { return std::ranges::all_of(each.traces.analog, isZero); };
  QStringList notes = StaleNotes();
  if (std::ranges::all_of(channels_, isFlat)) {
    notes << QStringLiteral("Zeros only: as it seems, no waveform has arrived yet.");
  }
  return notes;
}

}  // namespace korvax::client
