#pragma once

#include <QObject>
#include <QWebSocket>
#include <QWebSocketServer>

#include <functional>
#include <optional>
#include <vector>

namespace test {

/// A WebSocket server on the loopback interface, in the test's own thread, that answers as it is told.
class ScriptedServer : public QObject {
  Q_OBJECT

public:
  struct Query {
    QString route;
    QString message;
  };

  /// What to answer to a query; none to stay silent.
  using Script = std::function<std::optional<QString>(const Query& query)>;

  /// Listens on `port`, or on a free one for 0.
  explicit ScriptedServer(Script script, quint16 port = 0);

  quint16 Port() const { return server_.serverPort(); }
  const std::vector<Query>& Queries() const { return queries_; }

  /// The most queries that ever waited for their answers at once.
  int MostWaiting() const { return mostWaiting_; }

  /// Answers come only this long after their query.
  void DelayAnswers(int milliseconds) { delay_ = milliseconds; }

  /// From now on queries get no answer.
  void StopAnswering() {
    script_ = [](const Query&) { return std::nullopt; };
  }

  /// Ends every connection; new ones are still accepted.
  void DropClients();

private:
  void Accept();
  void Take(QWebSocket* socket, const QString& message);

  QWebSocketServer server_;
  Script script_;
  std::vector<Query> queries_;
  int delay_ = 0;
  int waiting_ = 0;
  int mostWaiting_ = 0;
};

/// A script that gives the same answer to every query.
ScriptedServer::Script Always(const QString& answer);

/// A script that gives no answer.
std::optional<QString> Silence(const ScriptedServer::Query& query);

/// A script that gives the answers one after the other, and beyond the last none, after it has raised `signal`
/// where one is given.
ScriptedServer::Script OneByOne(QStringList answers, int signal = 0);

/// A script that answers data queries with `data` and status queries with `status`.
ScriptedServer::Script SpectrumScript(const QString& data, const QString& status);

}  // namespace test
