#include "tests/support/TestClient.h"

#include "tests/support/WaitFor.h"

#include <QNetworkProxy>
#include <QUrl>

namespace test {

TestClient::TestClient(const QString& route, const QString& host) : route_(route), host_(host) {
  socket_.setProxy(QNetworkProxy::NoProxy);
}

bool TestClient::Connect() {
  QUrl url;
  url.setScheme(QStringLiteral("ws"));
  url.setHost(host_);
  url.setPort(51234);
  url.setPath(QLatin1Char('/') + route_);
  socket_.open(url);
  const bool settled =
      WaitFor([this] { return IsConnected() || socket_.state() == QAbstractSocket::UnconnectedState; });
  return settled && IsConnected();
}

std::optional<QString> TestClient::Ask(const QString& query) {
  std::optional<QString> answer;
  QObject scope;
  QObject::connect(&socket_, &QWebSocket::textMessageReceived, &scope,
                   [&answer](const QString& message) { answer = message; });
  socket_.sendTextMessage(query);
  static_cast<void>(WaitFor([&] { return answer.has_value() || !IsConnected(); }));
  return answer;
}

std::optional<QByteArray> TestClient::AskBinary(const QByteArray& message) {
  std::optional<QByteArray> answer;
  QObject scope;
  QObject::connect(&socket_, &QWebSocket::binaryMessageReceived, &scope,
                   [&answer](const QByteArray& echo) { answer = echo; });
  socket_.sendBinaryMessage(message);
  static_cast<void>(WaitFor([&] { return answer.has_value() || !IsConnected(); }));
  return answer;
}

}  // namespace test
