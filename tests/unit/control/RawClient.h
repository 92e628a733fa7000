#pragma once

#include "tests/support/WaitFor.h"

#include <QHostAddress>
#include <QTcpSocket>

#include <stdexcept>

/// A WebSocket client made by hand on a plain TCP socket, for what a well-behaved one doesn't do: stop reading,
/// send halves of frames, vanish.
class RawClient {
public:
  /// Connects and asks for the upgrade; `response` then holds the server's answer. Each of `moreHeaders` ends its
  /// line.
  RawClient(quint16 port, const QByteArray& path, const QByteArray& moreHeaders = {}) {
    socket.connectToHost(QHostAddress::LocalHost, port);
    if (!test::WaitFor([this] { return socket.state() == QAbstractSocket::ConnectedState; })) {
      throw std::runtime_error("no connection to the server");
    }
    socket.write("GET " + path +
                 " HTTP/1.1\r\nHost: localhost\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                 "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\nSec-WebSocket-Version: 13\r\n" +
                 moreHeaders + "\r\n");
    if (!test::WaitFor([this] { return ReadResponse() || socket.state() == QAbstractSocket::UnconnectedState; })) {
      throw std::runtime_error("no answer to the upgrade");
    }
  }

  /// A text frame of less than 126 bytes, masked with zeros as clients may.
  static QByteArray TextFrame(const QByteArray& text) {
    QByteArray frame("\x81", 1);
    return frame.append(static_cast<char>(0x80 | text.size())).append(4, '\0').append(text);
  }

  bool IsUpgraded() const { return response.startsWith("HTTP/1.1 101 "); }

  QTcpSocket socket;
  QByteArray response;

private:
  bool ReadResponse() {
    response += socket.readAll();
    return response.contains("\r\n\r\n");
  }
};
