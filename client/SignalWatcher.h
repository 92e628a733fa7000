#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <memory>

namespace korvax::client {

/// While it lives, turns the process's signals into Qt signals of the event loop: Ctrl-C, termination and
/// hang-up into `interrupted`, a change of the terminal's size into `resized`. At most one at a time.
class SignalWatcher : public QObject {
  Q_OBJECT

public:
  explicit SignalWatcher(QObject* parent = nullptr);
  ~SignalWatcher() override;

signals:
  void interrupted();
  void resized();

private:
  static constexpr std::array watched{SIGINT, SIGTERM, SIGHUP, SIGWINCH};

  void Read();

  std::array<int, 2> pipe_{-1, -1};
  std::array<struct sigaction, watched.size()> former_{};
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace korvax::client
