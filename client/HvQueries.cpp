#include "client/HvQueries.h"

#include "client/JsonAnswers.h"

#include <QRegularExpression>

namespace korvax::client {

namespace {

const QString opening = QStringLiteral("{\"response\":\"ok\",");

QString ValuesQuery(const QString& param) {
  return ArgumentQuery(
      {{QStringLiteral("cmd"), QStringLiteral("get_all_ch_values")}, {QStringLiteral("param"), param}});
}

BoardValue ToValue(const QString& name, const QString& text) {
  const bool isArray = text.size() >= 2 && text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']'));
  if (!isArray) {
    return {name, false, {text}};
  }
  const QString inner = text.mid(1, text.size() - 2);
  return {name, true, inner.isEmpty() ? QStringList() : inner.split(QLatin1Char(','))};
}

/// The entries of an answer without its opening and its closing brace; a comma at the end is left by a
/// parameter without a value.
Read<std::vector<BoardValue>> ReadEntries(QString text) {
  static const QRegularExpression name(QStringLiteral("(?:^|,)\"([^\"]*)\":"));
  if (text.endsWith(QLatin1Char(','))) {
    text.chop(1);
  }
  std::vector<BoardValue> values;
  QRegularExpressionMatch match = name.match(text);
  if (!text.isEmpty() && (match.capturedStart() != 0 || !text.startsWith(QLatin1Char('"')))) {
    return {{}, QStringLiteral("a value stands there without a name")};
  }
  while (match.hasMatch()) {
    const int begin = match.capturedEnd();
    const QRegularExpressionMatch next = name.match(text, begin);
    const int end = next.hasMatch() ? next.capturedStart() : text.size();
    values.push_back(ToValue(match.captured(1), text.mid(begin, end - begin)));
    match = next;
  }
  return {values, {}};
}

}  // namespace

QString AllValuesQuery() {
  return ValuesQuery(QStringLiteral("all"));
}

QString ReadOnlyValuesQuery() {
  return ValuesQuery(QStringLiteral("read_only"));
}

QString SwitchQuery(bool on) {
  return ArgumentQuery(
      {{QStringLiteral("cmd"), on ? QStringLiteral("hv_global_on") : QStringLiteral("hv_global_off")}});
}

Read<std::vector<BoardValue>> ReadAllValues(const QString& answer) {
  if (!answer.startsWith(opening) || !answer.endsWith(QLatin1Char('}'))) {
    return {{}, QStringLiteral("it does not begin with {\"response\":\"ok\", and end with }")};
  }
  return ReadEntries(answer.mid(opening.size(), answer.size() - opening.size() - 1));
}

bool SaysNotConnected(const QString& answer) {
  const Read<QJsonDocument> document = ReadJson(answer);
  const QJsonObject object = document.value ? document.value->object() : QJsonObject();
  return object.value(QStringLiteral("response")) == QJsonValue(QStringLiteral("error")) &&
         object.value(QStringLiteral("reason")) == QJsonValue(QStringLiteral("Board not connected"));
}

}  // namespace korvax::client
