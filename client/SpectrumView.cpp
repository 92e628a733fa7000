#include "client/SpectrumView.h"

#include <QRegularExpression>
#include <QTime>

#include <algorithm>

namespace korvax::client {

namespace {

constexpr std::chrono::milliseconds shortestRetry{1000};

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
    : server_(server),
      request_(std::move(request)),
      console_(console),
      client_(server, QueryTarget(request_.path)) {
  picture_.path = request_.path;
  timer_.setSingleShot(true);
  clock_.start();
  connect(&timer_, &QTimer::timeout, this, &SpectrumView::AskForData);
  connect(&client_, &QueryClient::answered, this, &SpectrumView::TakeAnswer);
  connect(&client_, &QueryClient::failed, this, &SpectrumView::TakeFailure);
}

void SpectrumView::Start() {
  AskForData();
}

void SpectrumView::Stop() {
  timer_.stop();
  emit finished({});
}

void SpectrumView::Redraw() {
  if (screen_ && !picture_.channels.empty()) {
    screen_->Show(Lines());
  }
}

void SpectrumView::AskForData() {
  awaitingStatus_ = false;
  client_.Ask(DataQuery(request_.channels));
}

void SpectrumView::TakeAnswer(const QString& answer) {
  if (awaitingStatus_) {
    TakeStatus(answer);
  } else {
    TakeData(answer);
  }
}

void SpectrumView::TakeData(const QString& answer) {
  Read<std::vector<Counts>> data = ReadData(answer);
  const std::size_t asked = request_.channels.size();
  if (data.value && data.value->size() < asked) {
    // Channels count from 0 and come in ascending order, so it is the last ones that don't exist.
    TakeFailure(NoChannelEnding(request_.path, request_.channels[data.value->size()]));
    return;
  }
  if (data.value && data.value->size() > asked) {
    data.fault = QStringLiteral("it has more channels than the %1 asked for").arg(asked);
  }
  if (!data.fault.isEmpty()) {
    TakeFailure(BadAnswerEnding(request_.path, data.fault, answer));
    return;
  }
  arrived_ = std::move(*data.value);
  arrivedAt_ = clock_.elapsed();
  awaitingStatus_ = true;
  client_.Ask(StatusQuery());
}

void SpectrumView::TakeStatus(const QString& answer) {
  const Read<bool> counting = ReadStatus(answer);
  if (!counting.value) {
    TakeFailure(BadAnswerEnding(request_.path, counting.fault, answer));
    return;
  }
  Accept(*counting.value);
  if (request_.live && console_.IsTerminal() && !screen_) {
    screen_.emplace(console_);
  }
  if (screen_) {
    Redraw();
  } else {
    console_.Print(Lines().join(QLatin1Char('\n')));
  }
  if (!request_.live) {
    emit finished({});
  } else if (!console_.Fault().isEmpty()) {
    emit finished({ExitCode::OutputFailed, {}});
  } else {
    timer_.start(request_.interval);
  }
}

void SpectrumView::TakeFailure(const Ending& reason) {
  if (!request_.live || picture_.channels.empty()) {
    emit finished(reason);
    return;
  }
  const bool isNews = staleReason_.isEmpty();
  staleReason_ = reason.text.section(QLatin1Char('\n'), 0, 0);
  if (screen_) {
    Redraw();
  } else if (isNews) {
    console_.Print(Lines().join(QLatin1Char('\n')));
  }
  timer_.start(std::max(request_.interval, shortestRetry));
}

/// What has arrived becomes the picture.
void SpectrumView::Accept(bool counting) {
  std::vector<ChannelView> views;
  for (std::size_t index = 0; index < arrived_.size(); ++index) {
    const std::optional<double> rate = RateOf(index, arrived_[index]);
    views.push_back({request_.channels[index], std::move(arrived_[index]), rate});
  }
  arrived_.clear();
  picture_.channels = std::move(views);
  pictureAt_ = arrivedAt_;
  pictureTime_ = QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
  counting_ = counting;
  staleReason_.clear();
}

/// Counts per second since the last picture; none after a reset or a restart of the server.
std::optional<double> SpectrumView::RateOf(std::size_t index, const Counts& now) const {
  if (index >= picture_.channels.size() || arrivedAt_ <= pictureAt_) {
    return std::nullopt;
  }
  const quint64 before = Total(Shown(picture_.channels[index].counts, request_.range));
  const quint64 total = Total(Shown(now, request_.range));
  if (total < before) {
    return std::nullopt;
  }
  return 1000.0 * static_cast<double>(total - before) / static_cast<double>(arrivedAt_ - pictureAt_);
}

QStringList SpectrumView::Lines() const {
  Picture picture = picture_;
  AddNotes(picture);
  const TerminalSize size = console_.Size();
  PictureOptions options;
  options.width = request_.width.value_or(size.columns);
  // A picture that stays needs one line of the terminal for the prompt below it.
  const bool leavesPrompt = console_.IsTerminal() && !request_.live;
  options.height = request_.height.value_or(leavesPrompt ? size.rows - 1 : size.rows);
  options.logarithmic = request_.logarithmic;
  options.range = request_.range;
  options.shareHeight = screen_.has_value();
  return Draw(picture, options);
}

void SpectrumView::AddNotes(Picture& picture) const {
  picture.state = counting_ ? QStringLiteral("counting") : QStringLiteral("idle");
  if (!staleReason_.isEmpty()) {
    picture.state = QStringLiteral("STALE");
    picture.notes << QStringLiteral("STALE: this picture is of %1. Trying to read on.").arg(pictureTime_)
                  << staleReason_;
  } else if (!counting_) {
    picture.notes << QStringLiteral("Idle. To start counting:") << QStringLiteral("  ") + StartCommand();
  }
  if (request_.logarithmic) {
    picture.state.prepend(QStringLiteral("log · "));
  }
  if (screen_) {
    picture.state += QStringLiteral(" · Ctrl-C ends");
  }
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
