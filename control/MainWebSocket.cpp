#include "control/MainWebSocket.h"

#include "control/ClientAddress.h"
#include "control/QueryAudit.h"
#include "control/QueryRoutes.h"

#include <QUrl>
#include <QWebSocket>
#include <QWebSocketCorsAuthenticator>
#include <QtDebug>

#include <algorithm>

namespace {

// A client that connects and says nothing has so long; then it no longer counts as one.
constexpr int HandshakeTimeoutMs = 10'000;
constexpr int CheckEveryMs = 200;
constexpr int LongestShown = 200;
constexpr qint64 FlushAbove = 65536;

}  // namespace

MainWebSocket::MainWebSocket(quint16 port, bool debug, const BlockList* blockList, QObject* parent,
                             const NetworkSettings& settings)
    : QObject(parent),
      settings_(settings),
      server_(QStringLiteral("Main Server")),
      listener_(settings.maxConnections),
      debug_(debug) {
  if (!listener_.Listen(settings.address, port)) {
    return;
  }
  if (debug_) {
    qDebug() << "Main server listening on port" << Port();
  }
  blockList_ = blockList;
  ConnectServer();
}

void MainWebSocket::ConnectServer() {
  server_.setHandshakeTimeout(HandshakeTimeoutMs);
  connect(&listener_, &ClientListener::Accepted, &server_, &HandshakeServer::Begin);
  connect(&server_, &QWebSocketServer::originAuthenticationRequired, this, &MainWebSocket::CheckOrigin);
  connect(&server_, &QWebSocketServer::newConnection, this, &MainWebSocket::onNewConnection);
  connect(&server_, &QWebSocketServer::closed, &listener_, &ClientListener::Close);
  connect(&server_, &QWebSocketServer::closed, this, &MainWebSocket::closed);
  connect(&check_, &QTimer::timeout, this, &MainWebSocket::CheckClients);
  check_.start(CheckEveryMs);
}

MainWebSocket::~MainWebSocket() {
  server_.close();
  for (QWebSocket* client : clients_) {
    client->disconnect(this);  // deleting a live socket signals its disconnection
  }
  qDeleteAll(clients_);
}

void MainWebSocket::CheckOrigin(QWebSocketCorsAuthenticator* handshake) const {
  const QString origin = handshake->origin();
  if (!settings_.Allows(origin)) {
    handshake->setAllowed(false);
    qInfo() << "Client" << server_.Address() << "refused: its origin" << origin.left(LongestShown)
            << "isn't among \"origins\" of the configuration's \"network\"";
  }
}

void MainWebSocket::onNewConnection() {
  QWebSocket* const client = server_.nextPendingConnection();
  if (client == nullptr) {
    return;
  }
  server_.Finish();
  const auto longestMessage = static_cast<quint64>(settings_.maxMessageBytes);
  client->setMaxAllowedIncomingFrameSize(longestMessage);
  client->setMaxAllowedIncomingMessageSize(longestMessage);
  connect(client, &QWebSocket::textMessageReceived, this, &MainWebSocket::processTextMessage);
  connect(client, &QWebSocket::binaryMessageReceived, this, &MainWebSocket::processBinaryMessage);
  connect(client, &QWebSocket::disconnected, this, &MainWebSocket::socketDisconnected);
  clients_ << client;
}

bool MainWebSocket::KeepsReading(QWebSocket& client, qint64 most) {
  if (client.bytesToWrite() <= most) {
    return true;
  }
  qInfo() << "Client" << korvax::ClientAddress(client.peerAddress())
          << "disconnected: it has not read its answers, of which" << client.bytesToWrite()
          << "bytes wait. Read every answer before asking on.";
  client.abort();
  return false;
}

// All that a client has sent by now is answered before the event loop sends anything: without this, who asks much
// and reads everything would be taken for one who doesn't read.
void MainWebSocket::OnSent(QWebSocket& client, qint64 bytes) {
  longestAnswer_ = std::max(longestAnswer_, bytes);
  if (client.bytesToWrite() > FlushAbove) {
    client.flush();
  }
}

// A client that pings and never reads has no message answered, but its pongs wait as well. All that asking leads
// to stays below this.
void MainWebSocket::CheckClients() const {
  const QList<QWebSocket*> clients = clients_;  // who is disconnected leaves the list
  for (QWebSocket* client : clients) {
    KeepsReading(*client, 2 * (settings_.maxUnsentBytes + longestAnswer_));
  }
}

void MainWebSocket::processTextMessage(const QString& message) {
  auto* const client = qobject_cast<QWebSocket*>(sender());
  QString route;
  if (client != nullptr) {
    route = client->requestUrl().path(QUrl::FullyDecoded).remove(QLatin1Char('/'));
    korvax::LogStorageQuery(route, message, korvax::ClientAddress(client->peerAddress()));
  }
  const QString answer = blockList_ == nullptr ? QString() : korvax::AnswerQuery(*blockList_, route, message);
  if (debug_) {
    qDebug() << "Message received:" << message;
  }
  if (client != nullptr && KeepsReading(*client, settings_.maxUnsentBytes)) {
    OnSent(*client, client->sendTextMessage(answer));
  }
}

void MainWebSocket::processBinaryMessage(const QByteArray& message) {
  auto* const client = qobject_cast<QWebSocket*>(sender());
  if (debug_) {
    qDebug() << "Binary Message received:" << message;
  }
  if (client != nullptr && KeepsReading(*client, settings_.maxUnsentBytes)) {
    OnSent(*client, client->sendBinaryMessage(message));
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
