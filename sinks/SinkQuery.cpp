#include "sinks/SinkQuery.h"

#include "framework/BlockParameters.h"
#include "framework/QueryArgs.h"

#include <QJsonObject>

#include <algorithm>
#include <iterator>

namespace korvax {

SinkQuery SinkQuery::Parse(const QString& text) {
  const QueryArgs args(text);
  SinkQuery query{args.Text("source"), args.Text("cmd"), {}, args.Text("status")};
  for (const QJsonValue& element : args.Elements()) {
    const std::vector<qint32> channels = Integers(element.toObject()["channels"]);
    query.channels.insert(query.channels.end(), channels.begin(), channels.end());
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
