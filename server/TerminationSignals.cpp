#include "server/TerminationSignals.h"

#include <QCoreApplication>

#include <sys/eventfd.h>
#include <unistd.h>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace {

std::atomic<int> wakeDescriptor = -1;

// In signal context: makes the next signal of either kind end the process, and wakes the event loop.
extern "C" void WakeEventLoop(int /*signal*/) {
  const int interruptedErrno = errno;
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor.load(std::memory_order_relaxed), &one, sizeof one);
  errno = interruptedErrno;
}

void Handle(int signal) {
  struct sigaction action = {};
  action.sa_handler = WakeEventLoop;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals() {
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
}

TerminationSignals::~TerminationSignals() {
  if (notifier_ == nullptr) {
    return;
  }
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
  notifier_.reset();
  close(wakeDescriptor.exchange(-1));
}
