#include "tests/support/WebRequest.h"

#include "tests/support/WaitFor.h"

#include <QNetworkProxy>
#include <QSslSocket>

namespace test {

namespace {

bool Connect(QSslSocket& socket, const WebRequest& request) {
  const QString host = QStringLiteral("127.0.0.1");
  socket.setProxy(QNetworkProxy::NoProxy);
  if (request.encrypted) {
    socket.connectToHostEncrypted(host, request.port);
  } else {
    socket.connectToHost(host, request.port);
  }
  const auto isReady = [&] {
    return request.encrypted ? socket.isEncrypted() : socket.state() == QAbstractSocket::ConnectedState;
  };
  return WaitFor([&] { return isReady() || socket.state() == QAbstractSocket::UnconnectedState; }) && isReady();
}

std::optional<WebAnswer> Parse(const QByteArray& text) {
  const int end = text.indexOf("\r\n\r\n");
  if (end < 0) {
    return std::nullopt;
  }
  WebAnswer answer;
  answer.head = text.left(end + 2);
  answer.body = text.mid(end + 4);
  answer.status = answer.head.mid(9, 3).toInt();  // behind "HTTP/1.1 "
  return answer;
}

}  // namespace

QByteArray WebAnswer::Field(const QByteArray& name) const {
  for (const QByteArray& line : head.split('\n')) {
    const int colon = line.indexOf(':');
    if (colon > 0 && line.left(colon).toLower() == name.toLower()) {
      return line.mid(colon + 1).trimmed();
    }
  }
  return {};
}

std::optional<WebAnswer> WebRequest::Send() const {
  QSslSocket socket;
  if (!Connect(socket, *this)) {
    return std::nullopt;
  }
  socket.write("GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n" + fields + "\r\n");
  if (!WaitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; })) {
    return std::nullopt;
  }
  return Parse(socket.readAll());
}

}  // namespace test
