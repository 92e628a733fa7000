#include "control/NetworkSettings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtDebug>

namespace {

constexpr int LongestShown = 60;

struct Range {
  int least;
  int most;
};
constexpr Range Connections{1, 65536};
constexpr Range Bytes{1024, 2147483647};

// As JSON, on one line.
QString ValueText(const QJsonValue& value) {
  const QString array = QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
  return array.mid(1, array.size() - 2).left(LongestShown);
}

// An empty key means the section itself.
QString Fault(const QString& key, const QString& expected, const QJsonValue& found) {
  const QString place = key.isEmpty() ? QString() : QStringLiteral(", key \"%1\"").arg(key);
  return QStringLiteral("Configuration section \"network\"%1: expected %2; found %3")
      .arg(place, expected, ValueText(found));
}

void LogAsMissing(const QString& key, const QString& expected, const QJsonValue& found) {
  if (!found.isUndefined()) {
    qInfo().noquote() << Fault(key, expected, found) + QStringLiteral(", which reads as if it were missing");
  }
}

QString ReadAddress(const QJsonValue& value, QHostAddress& address) {
  const QString key = QStringLiteral("address");
  const QString expected = QStringLiteral("an IP address, such as \"127.0.0.1\"");
  if (!value.isString()) {
    LogAsMissing(key, expected, value);
    return {};
  }
  return address.setAddress(value.toString()) ? QString() : Fault(key, expected, value);
}

void ReadOrigins(const QJsonValue& value, std::optional<QStringList>& origins) {
  const QJsonArray array = value.toArray();
  QStringList texts;
  for (const QJsonValue& element : array) {
    if (element.isString()) {
      texts << element.toString();
    }
  }
  if (!value.isArray() || texts.size() < array.size()) {
    LogAsMissing(QStringLiteral("origins"), QStringLiteral("an array of texts"), value);
  }
  if (value.isArray()) {
    origins = texts;  // without what is no text: nobody gets in by mistake
  }
}

void ReadNumber(const QString& key, const QJsonValue& value, const Range& range, int& number) {
  const int read = value.toInt();  // 0, below every range, for what is no integer
  if (read >= range.least && read <= range.most) {
    number = read;
  } else {
    LogAsMissing(key, QStringLiteral("an integer from %1 to %2").arg(range.least).arg(range.most), value);
  }
}

}  // namespace

QString NetworkSettings::Read(const QJsonValue& section) {
  if (!section.isObject()) {
    LogAsMissing({}, QStringLiteral("an object"), section);
  }
  const QJsonObject network = section.toObject();
  ReadOrigins(network["origins"], origins);
  ReadNumber(QStringLiteral("max_connections"), network["max_connections"], Connections, maxConnections);
  ReadNumber(QStringLiteral("max_message_bytes"), network["max_message_bytes"], Bytes, maxMessageBytes);
  ReadNumber(QStringLiteral("max_unsent_bytes"), network["max_unsent_bytes"], Bytes, maxUnsentBytes);
  return ReadAddress(network["address"], address);
}

bool NetworkSettings::Allows(const QString& origin) const {
  // An origin is a scheme, a host and perhaps a port; the former two have no letter case, and the port no letters.
  return !origins || origin.isEmpty() || origins->contains(origin, Qt::CaseInsensitive);
}
