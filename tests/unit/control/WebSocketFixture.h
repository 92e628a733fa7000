#pragma once

#include "control/MainWebSocket.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/control/AnsweringBlock.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWebSocket>

#include <gtest/gtest.h>

/// A client that keeps what it receives. Its event loop is the test's.
class Client {
public:
  explicit Client(quint16 port, const QString& path = "/query_by_json", const QString& host = "127.0.0.1") {
    QObject::connect(&socket, &QWebSocket::textMessageReceived, &socket,
                     [this](const QString& text) { texts << text; });
    QObject::connect(&socket, &QWebSocket::binaryMessageReceived, &socket,
                     [this](const QByteArray& bytes) { binaries << bytes; });
    socket.open(QUrl(QString("ws://%1:%2%3").arg(host).arg(port).arg(path)));
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  bool IsConnected() const { return socket.state() == QAbstractSocket::ConnectedState; }
  [[nodiscard]] bool WaitUntilConnected() {
    return test::WaitFor([this] { return IsConnected(); });
  }

  /// The answer to one message, or a text that no block answers when none comes.
  QString Ask(const QString& message) {
    if (!WaitUntilConnected()) {
      return "(not connected)";
    }
    const int before = texts.size();
    socket.sendTextMessage(message);
    return test::WaitFor([&] { return texts.size() > before; }) ? texts.last() : QString("(no answer)");
  }

  QWebSocket socket;
  QStringList texts;
  QList<QByteArray> binaries;
};

/// Watches the events of all objects: finds the WebSocket server inside a MainWebSocket by the events of what
/// belongs to it, and counts the connections that the server disposes of.
class ServerWatch : public QObject {
public:
  ServerWatch() { QCoreApplication::instance()->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    for (QObject* object = watched; object != nullptr; object = object->parent()) {
      if (auto* const found = qobject_cast<QWebSocketServer*>(object)) {
        server = found;
      }
    }
    // The clients of the tests are never deleted later, so it is a connection of the server.
    if (event->type() == QEvent::DeferredDelete && qobject_cast<QWebSocket*>(watched) != nullptr) {
      ++disposed;
    }
    return false;
  }

  QPointer<QWebSocketServer> server;
  int disposed = 0;
};

/// A server on a free port with one spectrum "s" at "p/s" and one dumper "d" at "p/d".
class WebSocketFixture : public testing::Test {
protected:
  WebSocketFixture() {
    spectrum_ = &Add("spectrum", "s", "p/s");
    dumper_ = &Add("dumper", "d", "p/d");
    server_ = std::make_unique<MainWebSocket>(quint16{0}, false, &blocks_);
  }

  AnsweringBlock& Add(const QString& type, const QString& name, const QString& fullPath) {
    auto block = std::make_unique<AnsweringBlock>(type, name, fullPath);
    AnsweringBlock& added = *block;
    blocks_.push_back(std::move(block));
    return added;
  }

  void Restart(const NetworkSettings& settings) {
    server_ = std::make_unique<MainWebSocket>(quint16{0}, false, &blocks_, nullptr, settings);
  }

  quint16 Port() const { return server_->Port(); }

  static QString SpectrumQuery(int number) { return QString(R"({"path": "p/s", "number": %1})").arg(number); }

  test::LogCapture log_;
  ServerWatch watch_;
  BlockList blocks_;
  AnsweringBlock* spectrum_ = nullptr;
  AnsweringBlock* dumper_ = nullptr;
  std::unique_ptr<MainWebSocket> server_;
};
