#include "control/ClientListener.h"

#include "control/ClientAddress.h"

#include <QtDebug>

#include <sys/resource.h>
#include <sys/socket.h>
#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

constexpr int RetryAfterMs = 250;
constexpr int ReceiveBytes = 128 * 1024;  // the system doubles it

std::size_t Limit(int maxConnections) {
  const auto wanted = static_cast<rlim_t>(maxConnections);
  rlimit files{};
  if (getrlimit(RLIMIT_NOFILE, &files) != 0) {
    return wanted;
  }
  return std::min(wanted, std::max<rlim_t>(files.rlim_cur / 4 * 3, 1));
}

// What a client has sent by now is read and answered at a stretch: without a bound, one that asks on and on makes
// the others wait. Sockets that are accepted have the size of the one that listens.
void BoundReceiveBuffer(qintptr listening) {
  setsockopt(static_cast<int>(listening), SOL_SOCKET, SO_RCVBUF, &ReceiveBytes, sizeof ReceiveBytes);
}

// Any other error is of a client that has left before it was accepted.
bool IsOfThisProcess(int error) {
  return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

}  // namespace

ClientListener::ClientListener(int maxConnections) : limit_(Limit(maxConnections)) {
  retry_.setSingleShot(true);
  retry_.setInterval(RetryAfterMs);
  connect(&retry_, &QTimer::timeout, this, &ClientListener::StartAccepting);
}

bool ClientListener::Listen(const QHostAddress& address, quint16 port) {
  if (!server_.listen(address, port)) {
    if (address != QHostAddress(QHostAddress::Any)) {
      qInfo()
          << "Unable to listen on" << address.toString() << "port" << port << ":" << server_.errorString()
          << ". The server runs on without clients: set \"network\", \"address\" to an address of this machine.";
    }
    return false;
  }
  server_.pauseAccepting();
  BoundReceiveBuffer(server_.socketDescriptor());
  // Qt lets 50 clients wait; the system keeps others from connecting for a second and more.
  listen(static_cast<int>(server_.socketDescriptor()), SOMAXCONN);
  waiting_ = std::make_unique<QSocketNotifier>(server_.socketDescriptor(), QSocketNotifier::Read);
  connect(waiting_.get(), &QSocketNotifier::activated, this, &ClientListener::AcceptNext);
  StartAccepting();
  return true;
}

void ClientListener::Close() {
  retry_.stop();
  waiting_.reset();
  server_.close();
}

// One only, as those that are connected must get their turn.
void ClientListener::AcceptNext() {
  const int descriptor =
      accept4(static_cast<int>(server_.socketDescriptor()), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (descriptor < 0) {
    OnAcceptError(errno);
    return;
  }
  toldError_ = false;
  auto socket = std::make_unique<QTcpSocket>();
  socket->setSocketDescriptor(descriptor);
  if (IsFull()) {
    LogRefusal(*socket);
    socket->abort();
  } else {
    toldFull_ = false;
    sockets_.emplace_back(socket.get());
    emit Accepted(socket.release());
  }
}

void ClientListener::OnAcceptError(int error) {
  if (!IsOfThisProcess(error)) {
    return;
  }
  if (!toldError_) {
    toldError_ = true;
    qInfo() << "Clients can't be accepted:" << std::strerror(error)
            << ". They wait, and nothing else is disturbed. Let others close, or raise the limit of open files.";
  }
  waiting_->setEnabled(false);
  retry_.start();
}

void ClientListener::StartAccepting() {
  waiting_->setEnabled(true);
}

void ClientListener::LogRefusal(const QTcpSocket& socket) {
  if (!toldFull_) {
    toldFull_ = true;
    qInfo() << "Client" << korvax::ClientAddress(socket.peerAddress()) << "refused:" << limit_
            << "connections are open, the most that \"max_connections\" and the limit of open files allow. Others"
               " are refused in silence until one leaves.";
  }
}

// Closed ones are forgotten when it matters: their own signals can be lost, as a QWebSocket disconnects them all.
bool ClientListener::IsFull() {
  const auto isClosed = [](const QPointer<QTcpSocket>& socket) {
    return socket == nullptr || socket->state() == QAbstractSocket::UnconnectedState;
  };
  if (sockets_.size() >= limit_) {
    sockets_.erase(std::remove_if(sockets_.begin(), sockets_.end(), isClosed), sockets_.end());
  }
  return sockets_.size() >= limit_;
}
