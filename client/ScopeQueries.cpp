#include "client/ScopeQueries.h"

#include "client/JsonAnswers.h"

#include <cmath>

namespace korvax::client {

namespace {

/// Far beyond any converter, and small enough for all arithmetic of a scale to stay finite.
constexpr double largestSample = 1e100;

Read<Trace> ReadTrace(const QJsonValue& entry) {
  const QJsonValue data = entry.toObject().value(QStringLiteral("data"));
  if (!data.isArray()) {
    return {{}, QStringLiteral("has no array \"data\"")};
  }
  const QJsonArray samples = data.toArray();
  Trace trace;
  trace.reserve(static_cast<std::size_t>(samples.size()));
  for (const QJsonValue& sample : samples) {
    if (!sample.isDouble() || !(std::abs(sample.toDouble()) <= largestSample)) {
      return {{}, QStringLiteral("has a sample %1 that is not a value of a converter").arg(trace.size())};
    }
    trace.push_back(sample.toDouble());
  }
  return {std::move(trace), {}};
}

}  // namespace

QString EnableQuery(std::span<const int> channels) {
  QJsonArray flags;
  for (const int channel : channels) {
    while (flags.size() < channel) {
      flags.append(0);
    }
    flags.append(1);
  }
  return QueryText({{QStringLiteral("cmd"), QStringLiteral("set_channel")}, {QStringLiteral("ch_enable"), flags}});
}

QString TracesQuery() {
  return QueryText(QJsonObject{{QStringLiteral("cmd"), QStringLiteral("require_data")}});
}

Read<std::vector<Trace>> ReadTraces(const QString& answer) {
  const Read<QJsonArray> array = ReadArray(answer);
  if (!array.value) {
    return {{}, array.fault};
  }
  std::vector<Trace> traces;
  for (const QJsonValue& entry : *array.value) {
    Read<Trace> trace = ReadTrace(entry);
    if (trace.value && !traces.empty() && trace.value->size() != traces.front().size()) {
      trace = {{}, QStringLiteral("has %1 samples, not %2").arg(trace.value->size()).arg(traces.front().size())};
    }
    if (!trace.value) {
      return {{}, QStringLiteral("its entry %1 %2").arg(traces.size()).arg(trace.fault)};
    }
    traces.push_back(std::move(*trace.value));
  }
  return {std::move(traces), {}};
}

}  // namespace korvax::client
