#pragma once

#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <memory>
#include <vector>

/// Accepts connections, up to a limit that counts every open one, whatever its client has said so far. Without a
/// file descriptor to be had clients wait; the event loop does so, too, unlike QTcpServer's own accepting, which
/// then tries on and on. Main thread.
class ClientListener : public QObject {
  Q_OBJECT

public:
  /// At most `maxConnections` at once; and at most three quarters of the files that the process may have open, so
  /// that a crowd of clients never keeps a run from opening its files.
  explicit ClientListener(int maxConnections);

  /// Once. False when the address or the port can't be had: logged for an address that somebody has chosen.
  bool Listen(const QHostAddress& address, quint16 port);
  void Close();
  bool IsListening() const { return server_.isListening(); }
  /// The port listened on; 0 without one.
  quint16 Port() const { return server_.serverPort(); }

signals:
  /// The receiver owns the socket.
  void Accepted(QTcpSocket* socket);

private:
  void AcceptNext();
  void OnAcceptError(int error);
  void StartAccepting();
  void LogRefusal(const QTcpSocket& socket);
  bool IsFull();

  const std::size_t limit_;
  QTcpServer server_;                          // listens; its own accepting is paused
  std::unique_ptr<QSocketNotifier> waiting_;   // of clients to accept
  QTimer retry_;                               // runs while that is off
  std::vector<QPointer<QTcpSocket>> sockets_;  // not owned; all that are open, and some that no longer are
  bool toldFull_ = false;                      // since a client was accepted
  bool toldError_ = false;
};
