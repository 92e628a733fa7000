#include "client/GridQueries.h"

#include "client/JsonAnswers.h"

#include <QRegularExpression>

namespace korvax::client {

namespace {

QString SourceName(MapSource source) {
  switch (source) {
    case MapSource::CumulativeImage:
      return QStringLiteral("cumulative");
    case MapSource::ImmediateImage:
      return QStringLiteral("immediate");
    case MapSource::Position:
      break;
  }
  return QStringLiteral("heatmap");
}

/// A position map closes its brackets after the last counter and the last row: one without rows or columns
/// leaves them open, which is no JSON.
std::optional<CountGrid> ReadOpenGrid(const QString& answer) {
  static const QRegularExpression open(
      QStringLiteral("^\\s*\\{\"data\":\\[(?:(?<rows>(?:\\[,)*+)\\[\\])?\\}\\s*$"));
  const QRegularExpressionMatch match = open.match(answer);
  if (!match.hasMatch()) {
    return std::nullopt;
  }
  const auto length = static_cast<std::size_t>(match.capturedLength(QStringLiteral("rows")));
  const bool hasRows = match.capturedStart(QStringLiteral("rows")) >= 0;
  return CountGrid{hasRows ? length / 2 + 1 : 0, 0, {}};
}

/// Empty, or why `row` can't follow the rows that are there.
QString AddRow(CountGrid& grid, const QJsonValue& row) {
  if (!row.isArray()) {
    return QStringLiteral("is not an array");
  }
  const Read<Counts> counts = ReadCounts(row.toArray());
  if (!counts.value) {
    return counts.fault;
  }
  if (grid.rows > 0 && counts.value->size() != grid.columns) {
    return QStringLiteral("has %1 columns, row 0 has %2").arg(counts.value->size()).arg(grid.columns);
  }
  grid.columns = counts.value->size();
  grid.counts.insert(grid.counts.end(), counts.value->begin(), counts.value->end());
  ++grid.rows;
  return {};
}

}  // namespace

QString GridQuery(MapSource source) {
  return ArgumentQuery(
      {{QStringLiteral("cmd"), QStringLiteral("get_data")}, {QStringLiteral("source"), SourceName(source)}});
}

Read<CountGrid> ReadGrid(const QString& answer) {
  if (std::optional<CountGrid> open = ReadOpenGrid(answer)) {
    return {std::move(open), {}};
  }
  const Read<QJsonDocument> document = ReadJson(answer);
  if (!document.value) {
    return {{}, document.fault};
  }
  const QJsonValue data = document.value->object().value(QStringLiteral("data"));
  if (!data.isArray()) {
    return {{}, QStringLiteral("it is not one object with an array \"data\"")};
  }
  CountGrid grid;
  for (const QJsonValue& row : data.toArray()) {
    const QString fault = AddRow(grid, row);
    if (!fault.isEmpty()) {
      return {{}, QStringLiteral("its row %1 %2").arg(grid.rows).arg(fault)};
    }
  }
  return {std::move(grid), {}};
}

}  // namespace korvax::client
