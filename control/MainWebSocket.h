#pragma once

#include "framework/ChainContext.h"

#include <QList>
#include <QObject>
#include <QWebSocketServer>

class QWebSocket;

/// The one network entry of the server: a plain WebSocket on every local address. Hands each text message to the
/// block that its route names and sends the answer back on the same connection, even an empty one; echoes binary
/// messages. A client that sends a message of more than 256 MiB, or lets more than that of its answers wait, is
/// disconnected. Main thread.
class MainWebSocket : public QObject {
  Q_OBJECT

public:
  /// Listens at once. A port that can't be had leaves the object inert without a word: the process goes on
  /// without a query interface. `blockList` outlives this object.
  MainWebSocket(quint16 port, bool debug, const BlockList* blockList, QObject* parent = nullptr);
  ~MainWebSocket() override;

  bool IsListening() const { return server_.isListening(); }
  /// The port listened on; 0 when inert.
  quint16 Port() const { return server_.serverPort(); }

signals:
  void closed();

private slots:
  void onNewConnection();
  void processTextMessage(const QString& message);
  void processBinaryMessage(const QByteArray& message);
  void socketDisconnected();

private:
  /// False, and the client is disconnected, when it lets too many answer bytes wait.
  static bool KeepsReading(QWebSocket& client);

  QWebSocketServer server_;
  QList<QWebSocket*> clients_;  // owned; in order of acceptance
  const bool debug_;
  const BlockList* blockList_ = nullptr;
};
