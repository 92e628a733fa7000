#pragma once

#include "control/ClientListener.h"
#include "control/HandshakeServer.h"
#include "control/NetworkSettings.h"
#include "framework/ChainContext.h"

#include <QList>
#include <QObject>
#include <QTimer>

class QWebSocket;
class QWebSocketCorsAuthenticator;

/// The one network entry of the server: a plain WebSocket. Hands each text message to the block that its route
/// names and sends the answer back on the same connection, even an empty one; echoes binary messages. A client
/// beyond the limits of the settings is refused or disconnected. Main thread.
class MainWebSocket : public QObject {
  Q_OBJECT

public:
  /// Listens at once. A port that can't be had leaves the object inert without a word: the process goes on
  /// without a query interface. `blockList` outlives this object.
  MainWebSocket(quint16 port, bool debug, const BlockList* blockList, QObject* parent = nullptr,
                const NetworkSettings& settings = {});
  ~MainWebSocket() override;

  bool IsListening() const { return listener_.IsListening(); }
  /// The port listened on; 0 when inert.
  quint16 Port() const { return listener_.Port(); }

signals:
  void closed();

private slots:
  void onNewConnection();
  void processTextMessage(const QString& message);
  void processBinaryMessage(const QByteArray& message);
  void socketDisconnected();

private:
  void ConnectServer();
  void CheckOrigin(QWebSocketCorsAuthenticator* handshake) const;
  /// False, and the client is disconnected, when it lets more answer bytes wait.
  static bool KeepsReading(QWebSocket& client, qint64 most);
  void OnSent(QWebSocket& client, qint64 bytes);
  void CheckClients() const;

  const NetworkSettings settings_;
  HandshakeServer server_;
  ClientListener listener_;
  QList<QWebSocket*> clients_;  // owned; in order of acceptance
  const bool debug_;
  const BlockList* blockList_ = nullptr;
  QTimer check_;
  qint64 longestAnswer_ = 0;  // in bytes, of all clients
};
