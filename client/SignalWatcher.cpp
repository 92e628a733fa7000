#include "client/SignalWatcher.h"

#include <fcntl.h>
#include <unistd.h>
#include <atomic>
#include <cerrno>

namespace korvax::client {

namespace {

std::atomic<int> pipeEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may not lock");

void Pass(int number) {
  const int formerError = errno;
  const auto byte = static_cast<unsigned char>(number);
  // A full pipe already holds news enough.
  [[maybe_unused]] const ssize_t written = write(pipeEnd.load(), &byte, 1);
  errno = formerError;
}

}  // namespace

SignalWatcher::SignalWatcher(QObject* parent) : QObject(parent) {
  if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    return;  // without descriptors the signals keep their usual effect
  }
  pipeEnd = pipe_[1];
  notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &SignalWatcher::Read);
  struct sigaction action {};
  action.sa_handler = Pass;
  action.sa_flags = SA_RESTART;
  for (std::size_t index = 0; index < watched.size(); ++index) {
    sigaction(watched[index], &action, &former_[index]);
  }
}

SignalWatcher::~SignalWatcher() {
  if (!notifier_) {
    return;
  }
  for (std::size_t index = 0; index < watched.size(); ++index) {
    sigaction(watched[index], &former_[index], nullptr);
  }
  notifier_.reset();
  pipeEnd = -1;
  close(pipe_[0]);
  close(pipe_[1]);
}

void SignalWatcher::Read() {
  std::array<unsigned char, 64> bytes{};
  bool stop = false;
  bool sizeChanged = false;
  for (ssize_t count = 0; (count = read(pipe_[0], bytes.data(), bytes.size())) > 0;) {
    for (ssize_t index = 0; index < count; ++index) {
      const bool isResize = bytes[static_cast<std::size_t>(index)] == SIGWINCH;
      (isResize ? sizeChanged : stop) = true;
    }
  }
  if (stop) {
    emit interrupted();
  } else if (sizeChanged) {
    emit resized();
  }
}

}  // namespace korvax::client
