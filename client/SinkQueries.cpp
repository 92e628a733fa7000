#include "client/SinkQueries.h"

#include "client/JsonAnswers.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace korvax::client {

namespace {

QJsonObject Command(const QString& name) {
  return {{QStringLiteral("cmd"), name}};
}

/// Modulo 2^32; none for anything but a whole number that a signed or an unsigned 32-bit counter can hold.
std::optional<quint32> ReadCount(const QJsonValue& value) {
  constexpr double lowest = std::numeric_limits<qint32>::min();
  constexpr double highest = std::numeric_limits<quint32>::max();
  const double number = value.toDouble(std::nan(""));
  if (!(number >= lowest && number <= highest) || number != std::floor(number)) {
    return std::nullopt;
  }
  return static_cast<quint32>(static_cast<qint64>(number));
}

Read<Counts> ReadChannel(const QJsonValue& entry) {
  const QJsonValue data = entry.toObject().value(QStringLiteral("data"));
  if (!data.isArray()) {
    return {{}, QStringLiteral("has no array \"data\"")};
  }
  return ReadCounts(data.toArray());
}

}  // namespace

quint64 Total(std::span<const quint32> counts) {
  return std::accumulate(counts.begin(), counts.end(), quint64{0});
}

QString DataQuery(std::span<const int> channels) {
  QJsonArray list;
  for (const int channel : channels) {
    list.append(channel);
  }
  QJsonObject argument = Command(QStringLiteral("get_data"));
  argument.insert(QStringLiteral("channels"), list);
  return ArgumentQuery(argument);
}

QString StatusQuery() {
  return ArgumentQuery(Command(QStringLiteral("data_get_status")));
}

QString ResetQuery() {
  return ArgumentQuery(Command(QStringLiteral("reset")));
}

QString RunQuery(bool counting) {
  QJsonObject argument = Command(QStringLiteral("run_control"));
  argument.insert(QStringLiteral("status"), counting ? QStringLiteral("freerun") : QStringLiteral("idle"));
  return ArgumentQuery(argument);
}

Read<Counts> ReadCounts(const QJsonArray& bins) {
  Counts counts;
  counts.reserve(static_cast<size_t>(bins.size()));
  for (const QJsonValue& bin : bins) {
    const std::optional<quint32> count = ReadCount(bin);
    if (!count) {
      return {{}, QStringLiteral("has a bin %1 that is not a 32-bit count").arg(counts.size())};
    }
    counts.push_back(*count);
  }
  return {std::move(counts), {}};
}

Read<std::vector<Counts>> ReadData(const QString& answer) {
  const Read<QJsonArray> array = ReadArray(answer);
  if (!array.value) {
    return {{}, array.fault};
  }
  std::vector<Counts> channels;
  for (const QJsonValue& entry : *array.value) {
    Read<Counts> counts = ReadChannel(entry);
    if (!counts.value) {
      return {{}, QStringLiteral("its entry %1 %2").arg(channels.size()).arg(counts.fault)};
    }
    channels.push_back(std::move(*counts.value));
  }
  return {std::move(channels), {}};
}

Read<bool> ReadStatus(const QString& answer) {
  const Read<QJsonObject> response = ReadResponse(answer);
  if (!response.value) {
    return {{}, response.fault};
  }
  const QString status = response.value->value(QStringLiteral("status")).toString();
  if (status != QStringLiteral("freerun") && status != QStringLiteral("idle")) {
    return {{}, QStringLiteral("its \"status\" is neither \"freerun\" nor \"idle\"")};
  }
  return {status == QStringLiteral("freerun"), {}};
}

}  // namespace korvax::client
