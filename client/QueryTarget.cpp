#include "client/QueryTarget.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace korvax::client {

QueryTarget::QueryTarget(QString text) : text_(std::move(text)), isFullPath_(text_.contains(QLatin1Char('/'))) {}

QUrl QueryTarget::Url(const ServerAddress& server) const {
  QUrl url;
  url.setScheme(QStringLiteral("ws"));
  url.setHost(server.host);
  url.setPort(server.port);
  const QString route = isFullPath_ ? QStringLiteral("query_by_json") : text_;
  url.setPath(QLatin1Char('/') + route, QUrl::DecodedMode);
  return url;
}

std::optional<QString> QueryTarget::Message(const QString& json) const {
  const QJsonDocument document = QJsonDocument::fromJson(json.toUtf8());
  if (!document.isObject()) {
    return std::nullopt;
  }
  if (!isFullPath_) {
    return json;
  }
  QJsonObject query = document.object();
  query.insert(QStringLiteral("path"), text_);
  return QString::fromUtf8(QJsonDocument(query).toJson(QJsonDocument::Compact));
}

}  // namespace korvax::client
