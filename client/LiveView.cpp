#include "client/LiveView.h"

#include "client/SignalWatcher.h"

#include <QTime>

#include <algorithm>

namespace korvax::client {

namespace {

constexpr std::chrono::milliseconds shortestRetry{1000};

}  // namespace

LiveView::LiveView(const ServerAddress& server, const QueryTarget& target, const Refresh& refresh,
                   Console& console)
    : refresh_(refresh), console_(console), client_(server, target) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &LiveView::Ask);
  connect(&client_, &QueryClient::answered, this, &LiveView::TakeAnswer);
  connect(&client_, &QueryClient::failed, this, &LiveView::TakeFailure);
}

Ending LiveView::Run() {
  // Outlives the screen: a signal while the terminal is being restored must not end the process.
  std::optional<SignalWatcher> watcher;
  if (refresh_.live) {
    watcher.emplace();
    connect(&*watcher, &SignalWatcher::interrupted, this, &LiveView::Stop);
    connect(&*watcher, &SignalWatcher::resized, this, &LiveView::Redraw);
  }
  Ask();
  loop_.exec();
  screen_.reset();
  return ending_;
}

QString LiveView::State(const QString& usual) const {
  QStringList words(staleReason_.isEmpty() ? usual : QStringLiteral("STALE"));
  if (screen_) {
    words.append(QStringLiteral("Ctrl-C ends"));
  }
  words.removeAll(QString());
  return words.join(QStringLiteral(" · "));
}

QStringList LiveView::StaleNotes() const {
  if (staleReason_.isEmpty()) {
    return {};
  }
  return {QStringLiteral("STALE: this picture is of %1. Trying to read on.").arg(pictureTime_), staleReason_};
}

TerminalSize LiveView::Room(const PictureSize& asked) const {
  const TerminalSize size = console_.Size();
  // A picture that stays needs one line of the terminal for the prompt below it.
  const bool leavesPrompt = console_.IsTerminal() && !refresh_.live;
  return {asked.width.value_or(size.columns), asked.height.value_or(leavesPrompt ? size.rows - 1 : size.rows)};
}

void LiveView::Ask() {
  client_.Ask(Begin());
}

void LiveView::TakeAnswer(const QString& answer) {
  const Step step = Take(answer);
  if (const auto* query = std::get_if<QString>(&step)) {
    client_.Ask(*query);
  } else if (const auto* reason = std::get_if<Ending>(&step)) {
    TakeFailure(*reason);
  } else {
    TakeReading();
  }
}

void LiveView::TakeFailure(const Ending& reason) {
  if (!refresh_.live || pictureTime_.isEmpty()) {
    Finish(reason);
    return;
  }
  const bool isNews = staleReason_.isEmpty();
  staleReason_ = reason.text.section(QLatin1Char('\n'), 0, 0);
  if (screen_ || isNews) {
    Show();
  }
  timer_.start(std::max(refresh_.interval, shortestRetry));
}

void LiveView::TakeReading() {
  pictureTime_ = QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
  staleReason_.clear();
  if (refresh_.live && console_.IsTerminal() && !screen_) {
    screen_.emplace(console_);
  }
  Show();
  if (!refresh_.live) {
    Finish({});
  } else if (!console_.Fault().isEmpty()) {
    Finish({ExitCode::OutputFailed, {}});
  } else {
    timer_.start(refresh_.interval);
  }
}

void LiveView::Show() {
  if (screen_) {
    screen_->Show(Lines());
  } else {
    console_.Print(Lines().join(QLatin1Char('\n')));
  }
}

/// The last picture again, for a terminal that has another size.
void LiveView::Redraw() {
  if (screen_) {
    Show();
  }
}

/// As the user wished.
void LiveView::Stop() {
  timer_.stop();
  Finish({});
}

void LiveView::Finish(const Ending& ending) {
  ending_ = ending;
  loop_.quit();
}

}  // namespace korvax::client
