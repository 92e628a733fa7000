#pragma once

#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

namespace korvax::client {

/// Where the server listens and how long it may take to connect, and again to answer.
struct ServerAddress {
  QString host = QStringLiteral("127.0.0.1");
  quint16 port = 51234;
  std::chrono::milliseconds timeout{5000};
};

/// The block that a query is for, and the route that leads to it. A text with a "/" in it is a full path,
/// which the server looks up in the message; any other is a block name, which stands in the URL.
class QueryTarget {
public:
  explicit QueryTarget(QString text);

  const QString& Text() const { return text_; }
  bool IsFullPath() const { return isFullPath_; }

  /// The WebSocket address of the route; invalid when the host can't stand in a URL.
  QUrl Url(const ServerAddress& server) const;

  /// The message that carries `json` to the target: unchanged for a name, with the member "path" added for
  /// a full path. None when `json` is not a JSON object.
  std::optional<QString> Message(const QString& json) const;

private:
  QString text_;
  bool isFullPath_;
};

}  // namespace korvax::client
