#pragma once

#include <QTcpSocket>
#include <QWebSocketServer>

/// Makes WebSockets of connections that others have accepted, and knows which one its signals are about: Qt's own
/// class has neither a time limit for such connections nor the client's address while it asks about an origin.
/// Main thread.
class HandshakeServer : public QWebSocketServer {
public:
  explicit HandshakeServer(const QString& name) : QWebSocketServer(name, NonSecureMode) {}

  /// Takes the socket over. A client that doesn't finish its handshake within handshakeTimeoutMS is disconnected.
  void Begin(QTcpSocket* socket);

  /// To be called, by another object, while it emits a signal of a handshake: with newConnection that one is over.
  void Finish() const;
  QString Address() const;

private:
  QTcpSocket* Socket() const { return qobject_cast<QTcpSocket*>(sender()); }
};
