#include "sinks/SinkQuery.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iterator>

namespace korvax {

namespace {

void ReadText(const QJsonObject& element, const char* key, QString& text) {
  const QJsonValue value = element[QLatin1String(key)];
  if (!value.isUndefined()) {
    text = value.toString();
  }
}

}  // namespace

SinkQuery SinkQuery::Parse(const QString& text) {
  SinkQuery query;
  const QJsonArray args = QJsonDocument::fromJson(text.toUtf8()).object()["args"].toArray();
  for (const QJsonValue& arg : args) {
    const QJsonObject element = arg.toObject();
    ReadText(element, "source", query.source);
    ReadText(element, "cmd", query.command);
    ReadText(element, "status", query.status);
    const QJsonArray channels = element["channels"].toArray();
    for (const QJsonValue& channel : channels) {
      query.channels.push_back(channel.toInt());
    }
  }
  return query;
}

std::vector<qint32> SinkQuery::SelectedChannels(qint32 channelNumber) const {
  std::vector<qint32> selected;
  std::copy_if(channels.begin(), channels.end(), std::back_inserter(selected),
               [channelNumber](qint32 channel) { return channel >= 0 && channel < channelNumber; });
  std::sort(selected.begin(), selected.end());
  selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
  return selected;
}

}  // namespace korvax
