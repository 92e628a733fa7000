#include "client/CountingView.h"

#include "client/SinkQueries.h"

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

CountingView::CountingView(const ServerAddress& server, const QString& path, const Refresh& refresh,
                           Console& console)
    : LiveView(server, QueryTarget(path), refresh, console), server_(server), path_(path) {
  clock_.start();
}

QString CountingView::Begin() {
  awaitingStatus_ = false;
  return CountsQuery();
}

LiveView::Step CountingView::Take(const QString& answer) {
  if (awaitingStatus_) {
    return TakeStatus(answer);
  }
  const Ending ending = TakeCounts(answer);
  if (ending.code != ExitCode::Ok) {
    return ending;
  }
  takenAt_ = clock_.elapsed();
  awaitingStatus_ = true;
  return StatusQuery();
}

LiveView::Step CountingView::TakeStatus(const QString& answer) {
  const Read<bool> counting = ReadStatus(answer);
  if (!counting.value) {
    return BadAnswerEnding(path_, counting.fault, answer);
  }
  Accept();
  picturedAt_ = takenAt_;
  counting_ = *counting.value;
  return Complete{};
}

std::optional<double> CountingView::RateOf(quint64 before, quint64 now) const {
  if (!picturedAt_ || takenAt_ <= *picturedAt_ || now < before) {
    return std::nullopt;
  }
  return 1000.0 * static_cast<double>(now - before) / static_cast<double>(takenAt_ - *picturedAt_);
}

Heading CountingView::TitleOf(const QStringList& words, bool countsWhenIdle) const {
  const bool isCounting = counting_ || countsWhenIdle;
  const QString usual = isCounting ? QStringLiteral("counting") : QStringLiteral("idle");
  const QStringList state = words + QStringList{State(usual)};
  QStringList notes = StaleNotes();
  if (notes.isEmpty() && !isCounting) {
    notes << QStringLiteral("Idle. To start counting:") << QStringLiteral("  ") + StartCommand();
  }
  return {path_, state.join(QStringLiteral(" · ")), notes};
}

QString CountingView::StartCommand() const {
  const ServerAddress usual;
  QString command = QStringLiteral("korvaxctl start ") + ShellWord(path_);
  if (server_.host != usual.host) {
    command += QStringLiteral(" --host ") + ShellWord(server_.host);
  }
  if (server_.port != usual.port) {
    command += QStringLiteral(" --port %1").arg(server_.port);
  }
  return command;
}

}  // namespace korvax::client
