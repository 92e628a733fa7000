#include "tests/support/NetworkNamespace.h"

#include <QDir>

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace test {

namespace {

bool BringLoopbackUp() {
  const int handle = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (handle < 0) {
    return false;
  }
  ifreq request{};
  std::strcpy(request.ifr_name, "lo");
  request.ifr_flags = IFF_UP | IFF_RUNNING;
  const bool up = ioctl(handle, SIOCSIFFLAGS, &request) == 0;
  close(handle);
  return up;
}

// Who may not have a network as such may have one with a user namespace. That is left without a mapping of users:
// file permissions then stay those of the user who runs the tests.
bool EnterOwnNetwork() {
  return (unshare(CLONE_NEWNET) == 0 || unshare(CLONE_NEWNET | CLONE_NEWUSER) == 0) && BringLoopbackUp();
}

// Held until the process ends; the processes it starts don't inherit it.
void WaitForTurn() {
  const QByteArray path = QDir::temp().filePath(QStringLiteral("korvax-port-51234.lock")).toLocal8Bit();
  int file = open(path.constData(), O_RDONLY | O_CLOEXEC);  // may be another user's
  if (file < 0) {
    file = open(path.constData(), O_RDONLY | O_CREAT | O_CLOEXEC, 0644);
  }
  while (file >= 0 && flock(file, LOCK_EX) != 0 && errno == EINTR) {
  }
}

}  // namespace

void OwnThePort() {
  static const bool done = [] {
    if (!EnterOwnNetwork()) {
      WaitForTurn();
    }
    return true;
  }();
  static_cast<void>(done);
}

}  // namespace test
