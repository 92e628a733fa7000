#include "control/MainWebSocket.h"

#include "control/QueryRoutes.h"

#include <QUrl>
#include <QWebSocket>
#include <QtDebug>

namespace {

// One message may be this long, and one client owe us the reading of this much: a client that sends without end,
// or never reads, must not take the memory of the acquisition.
constexpr quint64 LongestMessage = quint64{256} << 20;
constexpr qint64 MostUnsentBytes = qint64{256} << 20;

}  // namespace

MainWebSocket::MainWebSocket(quint16 port, bool debug, const BlockList* blockList, QObject* parent)
    : QObject(parent), server_(QStringLiteral("Main Server"), QWebSocketServer::NonSecureMode), debug_(debug) {
  if (!server_.listen(QHostAddress::Any, port)) {
    return;
  }
  if (debug_) {
    qDebug() << "Main server listening on port" << Port();
  }
  blockList_ = blockList;
  connect(&server_, &QWebSocketServer::newConnection, this, &MainWebSocket::onNewConnection);
  connect(&server_, &QWebSocketServer::closed, this, &MainWebSocket::closed);
}

MainWebSocket::~MainWebSocket() {
  server_.close();
  for (QWebSocket* client : clients_) {
    client->disconnect(this);  // deleting a live socket signals its disconnection
  }
  qDeleteAll(clients_);
}

void MainWebSocket::onNewConnection() {
  QWebSocket* const client = server_.nextPendingConnection();
  if (client == nullptr) {
    return;
  }
  client->setMaxAllowedIncomingFrameSize(LongestMessage);
  client->setMaxAllowedIncomingMessageSize(LongestMessage);
  connect(client, &QWebSocket::textMessageReceived, this, &MainWebSocket::processTextMessage);
  connect(client, &QWebSocket::binaryMessageReceived, this, &MainWebSocket::processBinaryMessage);
  connect(client, &QWebSocket::disconnected, this, &MainWebSocket::socketDisconnected);
  clients_ << client;
}

bool MainWebSocket::KeepsReading(QWebSocket& client) {
  if (client.bytesToWrite() <= MostUnsentBytes) {
    return true;
  }
  qInfo() << "Client" << client.peerAddress().toString() << "disconnected: it has not read its answers, of which"
          << client.bytesToWrite() << "bytes wait. Read every answer before asking on.";
  client.abort();
  return false;
}

void MainWebSocket::processTextMessage(const QString& message) {
  auto* const client = qobject_cast<QWebSocket*>(sender());
  QString route;
  if (client != nullptr) {
    route = client->requestUrl().path(QUrl::FullyDecoded).remove(QLatin1Char('/'));
  }
  const QString answer = blockList_ == nullptr ? QString() : korvax::AnswerQuery(*blockList_, route, message);
  if (debug_) {
    qDebug() << "Message received:" << message;
  }
  if (client != nullptr && KeepsReading(*client)) {
    client->sendTextMessage(answer);
  }
}

void MainWebSocket::processBinaryMessage(const QByteArray& message) {
  auto* const client = qobject_cast<QWebSocket*>(sender());
  if (debug_) {
    qDebug() << "Binary Message received:" << message;
  }
  if (client != nullptr && KeepsReading(*client)) {
    client->sendBinaryMessage(message);
  }
}

void MainWebSocket::socketDisconnected() {
  auto* const client = qobject_cast<QWebSocket*>(sender());
  if (debug_) {
    qDebug() << "socketDisconnected:" << client;
  }
  if (client != nullptr) {
    clients_.removeAll(client);
    client->deleteLater();
  }
}
