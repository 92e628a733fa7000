#pragma once

#include "tests/support/WebRequest.h"
#include "tests/system/SystemTest.h"

namespace test {

/// Base of the tests of what reaches browsers: a page in place of the built console, in a folder that looks like a
/// clone of the project, and the web server's process.
class ConsoleFixture : public SystemTest {
public:
  static const QByteArray PageText;
  static const QByteArray ScriptText;

protected:
  ConsoleFixture(const QString& webServer, quint16 port, bool encrypted);

  /// Waits until the web server answers a request with these fields; a test can't go on without.
  void StartWebServer(const QStringList& arguments, const QByteArray& fields = {});

  /// A GET request to the web server; status 0 when there is no answer.
  WebAnswer Get(const QByteArray& path, const QByteArray& fields = {}) const;
  /// What a page of that origin is answered that asks for a WebSocket and doesn't get it.
  WebAnswer Refusal(const QByteArray& route, const QByteArray& origin, const QByteArray& fields = {}) const;
  /// A client that comes by way of the web server.
  std::unique_ptr<TestClient> Page(const QString& route, const QString& origin,
                                   const QByteArray& login = {}) const;

  const quint16 port;
  const bool encrypted;
  ServerProcess webServer;
};

}  // namespace test
