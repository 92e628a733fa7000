#pragma once

#include <QNetworkRequest>
#include <QWebSocket>

#include <optional>

namespace test {

/// One client of the server, most often on the local host. Every operation runs the event loop until it is done.
class TestClient {
public:
  /// The route is the URL path without its leading slash.
  explicit TestClient(const QString& route, const QString& host = QStringLiteral("127.0.0.1"));
  /// As a page of that origin, or without one, and at any address.
  TestClient(QNetworkRequest request, const QString& origin);

  /// Connects; false when the server refuses.
  bool Connect();
  bool IsConnected() const { return socket_.state() == QAbstractSocket::ConnectedState; }

  /// Sends a text and waits for its answer; nothing when none comes.
  std::optional<QString> Ask(const QString& query);
  std::optional<QByteArray> AskBinary(const QByteArray& message);
  /// Sends a text and doesn't wait.
  void Tell(const QString& query) { socket_.sendTextMessage(query); }

  /// Ends the connection without a word to the server.
  void Abort() { socket_.abort(); }
  void Close() { socket_.close(); }

private:
  const QNetworkRequest request_;
  QWebSocket socket_;
};

}  // namespace test
