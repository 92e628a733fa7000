#include "tests/unit/client/ScriptedServer.h"

#include <QTimer>

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace test {

ScriptedServer::ScriptedServer(Script script, quint16 port)
    : server_(QStringLiteral("scripted"), QWebSocketServer::NonSecureMode), script_(std::move(script)) {
  connect(&server_, &QWebSocketServer::newConnection, this, &ScriptedServer::Accept);
  if (!server_.listen(QHostAddress::LocalHost, port)) {
    throw std::runtime_error("the scripted server can't listen");
  }
}

void ScriptedServer::DropClients() {
  for (QWebSocket* socket : server_.findChildren<QWebSocket*>()) {
    socket->abort();
  }
}

void ScriptedServer::Accept() {
  QWebSocket* socket = server_.nextPendingConnection();
  socket->setParent(&server_);
  connect(socket, &QWebSocket::textMessageReceived, this,
          [this, socket](const QString& message) { Take(socket, message); });
}

void ScriptedServer::Take(QWebSocket* socket, const QString& message) {
  queries_.push_back({socket->requestUrl().path(QUrl::FullyDecoded), message});
  mostWaiting_ = std::max(mostWaiting_, ++waiting_);
  const std::optional<QString> answer = script_(queries_.back());
  if (!answer) {
    return;
  }
  QTimer::singleShot(delay_, socket, [this, socket, text = *answer] {
    --waiting_;
    socket->sendTextMessage(text);
  });
}

ScriptedServer::Script Always(const QString& answer) {
  return [answer](const ScriptedServer::Query&) { return answer; };
}

std::optional<QString> Silence(const ScriptedServer::Query&) {
  return std::nullopt;
}

ScriptedServer::Script OneByOne(QStringList answers, int signal) {
  return [answers = std::move(answers), signal](const ScriptedServer::Query&) mutable -> std::optional<QString> {
    if (!answers.isEmpty()) {
      return answers.takeFirst();
    }
    if (signal != 0) {
      std::raise(signal);
    }
    return std::nullopt;
  };
}

ScriptedServer::Script SpectrumScript(const QString& data, const QString& status) {
  return [data, status](const ScriptedServer::Query& query) -> std::optional<QString> {
    return query.message.contains(QStringLiteral("data_get_status")) ? status : data;
  };
}

}  // namespace test
