#include "server/TerminationSignals.h"

#include <QCoreApplication>

#include <sys/eventfd.h>
#include <unistd.h>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace {

std::atomic<int> wakeDescriptor = -1;

// In signal context: makes the next SIGINT or SIGTERM end the process, and wakes the event loop. A terminal that
// is closed may hang up more than once.
extern "C" void WakeEventLoop(int /*signal*/) {
  const int interruptedErrno = errno;
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
  std::signal(SIGHUP, SIG_IGN);
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor.load(std::memory_order_relaxed), &one, sizeof one);
  errno = interruptedErrno;
}

bool IsHandled(int signal) {
  struct sigaction action = {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler == WakeEventLoop;
}

void Handle(int signal) {
  struct sigaction action = {};
  sigaction(signal, nullptr, &action);
  if (signal == SIGHUP && action.sa_handler == SIG_IGN) {
    return;  // started so that it outlives its terminal
  }
  action = {};
  action.sa_handler = WakeEventLoop;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals() {
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a write that fails
  std::signal(SIGPIPE, SIG_IGN);  // whoever read the log is gone; the acquisition goes on
  const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (descriptor < 0) {
    return;  // signals then end the process as they do by default
  }
  wakeDescriptor.store(descriptor, std::memory_order_relaxed);
  notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    notifier_->setEnabled(false);
    QCoreApplication::quit();
  });
  Handle(SIGINT);
  Handle(SIGTERM);
  Handle(SIGHUP);
}

TerminationSignals::~TerminationSignals() {
  if (notifier_ == nullptr) {
    return;
  }
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (IsHandled(signal)) {  // hang-ups that are ignored stay so: workers may still be finishing
      std::signal(signal, SIG_DFL);
    }
  }
  notifier_.reset();
  close(wakeDescriptor.exchange(-1));
}
