#include "client/QueryClient.h"

#include <QEventLoop>
#include <QNetworkProxy>

namespace korvax::client {

namespace {

/// Far above any answer of the server (a thousand channels of 16384 bins), far below what hurts this machine.
constexpr quint64 largestAnswer = 256U << 20U;

}  // namespace

QueryClient::QueryClient(const ServerAddress& server, QueryTarget target, QObject* parent)
    : QObject(parent), server_(server), target_(std::move(target)) {
  timer_.setSingleShot(true);
  timer_.setInterval(server_.timeout);
  connect(&timer_, &QTimer::timeout, this, &QueryClient::TakeTimeout);
}

void QueryClient::Ask(const QString& query) {
  message_ = target_.Message(query).value_or(query);
  waiting_ = true;
  timer_.start();
  if (socket_ && socket_->state() == QAbstractSocket::ConnectedState) {
    socket_->sendTextMessage(message_);
  } else {
    // From the event loop: some faults are found, and told, while a connection is being opened.
    QTimer::singleShot(0, this, &QueryClient::Connect);
  }
}

Reply QueryClient::AskAndWait(const QString& query) {
  Reply reply;
  QEventLoop loop;
  connect(this, &QueryClient::answered, &loop, [&](const QString& answer) {
    reply.answer = answer;
    loop.quit();
  });
  connect(this, &QueryClient::failed, &loop, [&](const Ending& reason) {
    reply.ending = reason;
    loop.quit();
  });
  Ask(query);
  loop.exec();
  return reply;
}

void QueryClient::Connect() {
  if (!waiting_) {
    return;
  }
  connected_ = false;
  socket_.reset(new QWebSocket());
  socket_->setProxy(QNetworkProxy::NoProxy);
  socket_->setMaxAllowedIncomingMessageSize(largestAnswer);
  connect(socket_.get(), &QWebSocket::connected, this, &QueryClient::TakeConnection);
  connect(socket_.get(), &QWebSocket::textMessageReceived, this, &QueryClient::TakeAnswer);
  connect(socket_.get(), &QWebSocket::disconnected, this, &QueryClient::TakeLoss);
  connect(socket_.get(), qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), this,
          &QueryClient::TakeLoss);
  socket_->open(target_.Url(server_));
}

void QueryClient::TakeConnection() {
  connected_ = true;
  timer_.start();
  socket_->sendTextMessage(message_);
}

void QueryClient::TakeAnswer(const QString& answer) {
  if (!waiting_) {
    return;
  }
  if (answer.isEmpty()) {
    Fail(EmptyAnswerEnding(target_.Text(), target_.IsFullPath()));
    return;
  }
  waiting_ = false;
  timer_.stop();
  emit answered(answer);
}

/// A refused connection and a lost one arrive by the same signals.
void QueryClient::TakeLoss() {
  if (connected_) {
    Fail(ClosedEnding(Address()));
  } else {
    Fail(UnreachableEnding(Address(), socket_->errorString()));
  }
}

void QueryClient::TakeTimeout() {
  const double seconds = std::chrono::duration<double>(server_.timeout).count();
  if (connected_) {
    Fail(NoAnswerEnding(Address(), seconds));
  } else {
    Fail(UnreachableEnding(Address(), QStringLiteral("no connection within %1 s").arg(seconds)));
  }
}

/// Whatever the reason, the connection goes too: a late answer must not pass for that of the next query.
void QueryClient::Fail(const Ending& reason) {
  if (!waiting_) {
    return;
  }
  waiting_ = false;
  timer_.stop();
  if (socket_) {
    socket_->disconnect(this);
    socket_.reset();
  }
  emit failed(reason);
}

QString QueryClient::Address() const {
  return target_.Url(server_).toString();
}

}  // namespace korvax::client
