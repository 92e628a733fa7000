#include "tests/support/TestClient.h"

#include "tests/support/WaitFor.h"

#include <QNetworkProxy>
#include <QUrl>

#include <utility>

namespace test {

namespace {

QUrl UrlOf(const QString& route, const QString& host) {
  QUrl url;
  url.setScheme(QStringLiteral("ws"));
  url.setHost(host);
  url.setPort(51234);
  url.setPath(QLatin1Char('/') + route);
  return url;
}

}  // namespace

TestClient::TestClient(const QString& route, const QString& host)
    : TestClient(QNetworkRequest(UrlOf(route, host)), QString()) {}

TestClient::TestClient(QNetworkRequest request, const QString& origin)
    : request_(std::move(request)), socket_(origin) {
  socket_.setProxy(QNetworkProxy::NoProxy);
}

// A web server that refuses may keep the connection open.
bool TestClient::Connect() {
  bool isRefused = false;
  QObject scope;
  QObject::connect(&socket_, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error), &scope,
                   [&isRefused] { isRefused = true; });
  socket_.open(request_);
  const bool settled =
      WaitFor([&] { return IsConnected() || isRefused || socket_.state() == QAbstractSocket::UnconnectedState; });
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
