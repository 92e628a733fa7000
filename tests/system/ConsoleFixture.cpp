#include "tests/system/ConsoleFixture.h"

#include "tests/support/WaitFor.h"

#include <QDir>

namespace test {

const QByteArray ConsoleFixture::PageText = "<!doctype html><title>A console</title>\n";
const QByteArray ConsoleFixture::ScriptText = "const script = \"" + QByteArray(2000, '-') + "\";\n";

namespace {

// Copied, as the web server looks for files beside its configuration's real place.
void CopyFiles(const QString& from, const QString& to) {
  EXPECT_TRUE(QDir().mkpath(to));
  for (const QString& name : QDir(from).entryList(QDir::Files)) {
    EXPECT_TRUE(QFile::copy(from + QLatin1Char('/') + name, to + QLatin1Char('/') + name)) << name.toStdString();
  }
}

void MakeClone(const QDir& folder) {
  CopyFiles(QStringLiteral(KORVAX_PROJECT_DIR "/serving"), folder.filePath(QStringLiteral("serving")));
  for (const char* name : {".deps", "examples"}) {
    QFile::link(QStringLiteral(KORVAX_PROJECT_DIR "/") + QLatin1String(name),
                folder.filePath(QLatin1String(name)));
  }
  EXPECT_TRUE(folder.mkpath(QStringLiteral("console/dist/assets")));
  Installation::Write(folder.filePath(QStringLiteral("console/dist/index.html")), ConsoleFixture::PageText);
  Installation::Write(folder.filePath(QStringLiteral("console/dist/assets/page-1a2b.js")),
                      ConsoleFixture::ScriptText);
}

}  // namespace

ConsoleFixture::ConsoleFixture(const QString& program, quint16 usedPort, bool usesTls)
    : port(usedPort),
      encrypted(usesTls),
      webServer(QDir(installation.WorkingFolder()).filePath(program), installation.WorkingFolder()) {
  MakeClone(QDir(installation.WorkingFolder()));
}

void ConsoleFixture::StartWebServer(const QStringList& arguments, const QByteArray& fields) {
  webServer.Start(arguments);
  const bool answers = WaitFor([&] { return Get("/", fields).status != 0 || !webServer.IsRunning(); });
  ASSERT_TRUE(answers && webServer.IsRunning()) << webServer.ErrorLines().join(QLatin1Char('\n')).toStdString();
}

WebAnswer ConsoleFixture::Get(const QByteArray& path, const QByteArray& fields) const {
  return WebRequest{port, path, fields, encrypted}.Send().value_or(WebAnswer());
}

WebAnswer ConsoleFixture::Refusal(const QByteArray& route, const QByteArray& origin,
                                  const QByteArray& fields) const {
  return Get("/socket/" + route, fields + "Origin: " + origin +
                                     "\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
                                     "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n");
}

std::unique_ptr<TestClient> ConsoleFixture::Page(const QString& route, const QString& origin,
                                                 const QByteArray& login) const {
  QUrl url(encrypted ? QStringLiteral("wss://127.0.0.1") : QStringLiteral("ws://127.0.0.1"));
  url.setPort(port);
  url.setPath(QStringLiteral("/socket/") + route);
  QNetworkRequest request(url);
  if (!login.isEmpty()) {
    request.setRawHeader("Authorization", login);
  }
  return std::make_unique<TestClient>(request, origin);
}

}  // namespace test
