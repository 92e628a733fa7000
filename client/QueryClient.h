#pragma once

#include "client/Endings.h"
#include "client/QueryTarget.h"

#include <QObject>
#include <QTimer>
#include <QWebSocket>

#include <memory>

namespace korvax::client {

/// What a query came to: the answer as it came, or the reason why there is none.
struct Reply {
  QString answer;
  Ending ending;

  bool Failed() const { return ending.code != ExitCode::Ok; }
};

/// One connection to one route of the server, with one query under way at a time. It connects at the first
/// query, and again at the first query after a failure. An empty answer counts as a failure. Lives in the
/// thread that created it, which must run an event loop.
class QueryClient : public QObject {
  Q_OBJECT

public:
  QueryClient(const ServerAddress& server, QueryTarget target, QObject* parent = nullptr);

  /// Sends `query`, a JSON object, as the route to the target needs it; `answered` or `failed` follows, once,
  /// later. Not to be called while one is awaited.
  void Ask(const QString& query);

  /// As Ask, but runs an event loop until the reply is there.
  Reply AskAndWait(const QString& query);

signals:
  void answered(const QString& answer);
  void failed(const korvax::client::Ending& reason);

private:
  /// Qt objects must not die inside their own signals.
  struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
  };

  void Connect();
  void TakeConnection();
  void TakeAnswer(const QString& answer);
  void TakeLoss();
  void TakeTimeout();
  void Fail(const Ending& reason);
  QString Address() const;

  const ServerAddress server_;
  const QueryTarget target_;
  std::unique_ptr<QWebSocket, DeleteLater> socket_;
  QTimer timer_;
  QString message_;
  bool connected_ = false;
  bool waiting_ = false;
};

}  // namespace korvax::client
