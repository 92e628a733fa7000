#include "client/SpectrumView.h"

#include <QRegularExpression>

namespace korvax::client {

namespace {

/// As a shell reads it back.
QString ShellWord(const QString& text) {
  static const QRegularExpression harmless(QStringLiteral("^[\\w./:-]+$"));
  if (harmless.match(text).hasMatch()) {
    return text;
  }
  QString quoted = text;
  quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
  return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

}  // namespace

SpectrumView::SpectrumView(const ServerAddress& server, SpectrumRequest request, Console& console)
    : LiveView(server, QueryTarget(request.path), request.refresh, console),
      server_(server),
      request_(std::move(request)) {
  clock_.start();
}

QString SpectrumView::Begin() {
  awaitingStatus_ = false;
  return DataQuery(request_.channels);
}

LiveView::Step SpectrumView::Take(const QString& answer) {
  return awaitingStatus_ ? TakeStatus(answer) : TakeData(answer);
}

LiveView::Step SpectrumView::TakeData(const QString& answer) {
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
  arrived_ = std::move(*data.value);
  arrivedAt_ = clock_.elapsed();
  awaitingStatus_ = true;
  return StatusQuery();
}

LiveView::Step SpectrumView::TakeStatus(const QString& answer) {
  const Read<bool> counting = ReadStatus(answer);
  if (!counting.value) {
    return BadAnswerEnding(request_.path, counting.fault, answer);
  }
  Accept(*counting.value);
  return Complete{};
}

/// What has arrived becomes the picture.
void SpectrumView::Accept(bool counting) {
  std::vector<ChannelView> views;
  for (std::size_t index = 0; index < arrived_.size(); ++index) {
    const std::optional<double> rate = RateOf(index, arrived_[index]);
    views.push_back({request_.channels[index], std::move(arrived_[index]), rate});
  }
  arrived_.clear();
  channels_ = std::move(views);
  channelsAt_ = arrivedAt_;
  counting_ = counting;
}

/// Counts per second since the last picture; none after a reset or a restart of the server.
std::optional<double> SpectrumView::RateOf(std::size_t index, const Counts& now) const {
  if (index >= channels_.size() || arrivedAt_ <= channelsAt_) {
    return std::nullopt;
  }
  const quint64 before = Total(Shown(channels_[index].counts, request_.range));
  const quint64 total = Total(Shown(now, request_.range));
  if (total < before) {
    return std::nullopt;
  }
  return 1000.0 * static_cast<double>(total - before) / static_cast<double>(arrivedAt_ - channelsAt_);
}

QStringList SpectrumView::Lines() const {
  const QString state = State(counting_ ? QStringLiteral("counting") : QStringLiteral("idle"));
  const Heading heading{request_.path, request_.logarithmic ? QStringLiteral("log · ") + state : state, Notes()};
  const TerminalSize room = Room(request_.size);
  PictureOptions options;
  options.width = room.columns;
  options.height = room.rows;
  options.logarithmic = request_.logarithmic;
  options.range = request_.range;
  options.shareHeight = IsInPlace();
  return Draw({heading, channels_}, options);
}

QStringList SpectrumView::Notes() const {
  const QStringList stale = StaleNotes();
  if (!stale.isEmpty() || counting_) {
    return stale;
  }
  return {QStringLiteral("Idle. To start counting:"), QStringLiteral("  ") + StartCommand()};
}

QString SpectrumView::StartCommand() const {
  const ServerAddress usual;
  QString command = QStringLiteral("korvaxctl start ") + ShellWord(request_.path);
  if (server_.host != usual.host) {
    command += QStringLiteral(" --host ") + ShellWord(server_.host);
  }
  if (server_.port != usual.port) {
    command += QStringLiteral(" --port %1").arg(server_.port);
  }
  return command;
}

}  // namespace korvax::client
