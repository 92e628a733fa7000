#include "control/HandshakeServer.h"

#include "control/ClientAddress.h"

#include <QTimer>

namespace {

constexpr const char Finished[] = "korvax_handshake_finished";

}  // namespace

void HandshakeServer::Begin(QTcpSocket* socket) {
  socket->setParent(this);
  handleConnection(socket);
  QTimer::singleShot(handshakeTimeoutMS(), socket, [socket] {
    if (!socket->property(Finished).toBool()) {
      socket->abort();
      socket->deleteLater();
    }
  });
}

void HandshakeServer::Finish() const {
  if (QTcpSocket* const socket = Socket()) {
    socket->setProperty(Finished, true);
  }
}

QString HandshakeServer::Address() const {
  const QTcpSocket* const socket = Socket();
  return socket == nullptr ? QString() : korvax::ClientAddress(socket->peerAddress());
}
