#include "client/RateQueries.h"

#include "client/JsonAnswers.h"

#include <cmath>

namespace korvax::client {

namespace {

/// Exact, unlike a number of JSON in general, as long as a signed 64-bit number holds it.
std::optional<quint64> ToCount(const QJsonValue& value) {
  const double number = value.toDouble(-1);
  if (number < 0 || number >= 18446744073709551616.0 || number != std::floor(number)) {
    return std::nullopt;
  }
  const QVariant exact = value.toVariant();
  return exact.type() == QVariant::LongLong ? exact.toULongLong() : static_cast<quint64>(number);
}

std::optional<double> ToRate(const QJsonValue& value) {
  const double rate = value.toDouble(-1);
  return rate >= 0 && std::isfinite(rate) ? std::optional(rate) : std::nullopt;
}

/// Puts the numbers of the array `key` of `object`, one a channel, where they belong.
template <typename Number>
QString ReadInto(std::vector<ChannelRates>& channels, Number ChannelRates::*target, const QJsonObject& object,
                 const char* key, std::optional<Number> (*convert)(const QJsonValue&)) {
  const QJsonValue value = object.value(QLatin1String(key));
  const QJsonArray numbers = value.toArray();
  if (!value.isArray() || static_cast<std::size_t>(numbers.size()) != channels.size()) {
    return QStringLiteral("its \"%1\" is not an array with a number a channel").arg(QLatin1String(key));
  }
  for (std::size_t index = 0; index < channels.size(); ++index) {
    const std::optional<Number> number = convert(numbers.at(static_cast<int>(index)));
    if (!number) {
      return QStringLiteral("its \"%1\" has a bad number %2").arg(QLatin1String(key)).arg(index);
    }
    channels[index].*target = *number;
  }
  return {};
}

Read<RateReading> ReadReading(const QJsonObject& object) {
  RateReading reading;
  reading.timestamp = ToCount(object.value(QStringLiteral("timestamp")));
  if (!reading.timestamp) {
    return {{}, QStringLiteral("it has no \"timestamp\"")};
  }
  auto& channels = reading.channels;
  channels.resize(static_cast<std::size_t>(object.value(QStringLiteral("rates_in")).toArray().size()));
  QString fault = ReadInto(channels, &ChannelRates::in, object, "rates_in", ToRate);
  if (fault.isEmpty()) {
    fault = ReadInto(channels, &ChannelRates::countsIn, object, "counts_in", ToCount);
  }
  if (fault.isEmpty()) {
    fault = ReadInto(channels, &ChannelRates::out, object, "rates_out", ToRate);
  }
  if (fault.isEmpty()) {
    fault = ReadInto(channels, &ChannelRates::countsOut, object, "counts_out", ToCount);
  }
  return fault.isEmpty() ? Read<RateReading>{std::move(reading), {}} : Read<RateReading>{{}, fault};
}

}  // namespace

QString LatestRatesQuery() {
  return ArgumentQuery({{QStringLiteral("cmd"), QStringLiteral("get_data")},
                        {QStringLiteral("source"), QStringLiteral("immediate")}});
}

Read<RateReading> ReadRates(const QString& answer) {
  const Read<QJsonDocument> document = ReadJson(answer);
  if (!document.value) {
    return {{}, document.fault};
  }
  const QJsonObject object = document.value->object();
  const QString status = object.value(QStringLiteral("status")).toString();
  if (status == QStringLiteral("nodata")) {
    return {RateReading{}, {}};
  }
  if (status != QStringLiteral("ok")) {
    return {{}, QStringLiteral("its \"status\" is neither \"ok\" nor \"nodata\"")};
  }
  return ReadReading(object);
}

}  // namespace korvax::client
