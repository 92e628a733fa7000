#include "client/Ledger.h"

#include "client/JsonAnswers.h"

#include <cmath>

namespace korvax::client {

namespace {

Figure FigureOf(const QJsonObject& object, const QString& key) {
  constexpr double largest = 9007199254740992;  // 2^53: all up to it are exact
  const QJsonValue value = object.value(key);
  const double number = value.toDouble();
  const bool whole = value.isDouble() && std::abs(number) <= largest && std::trunc(number) == number;
  return whole ? Figure(static_cast<qint64>(number)) : std::nullopt;
}

LedgerInput InputOf(const QJsonObject& input) {
  return {input.value(QStringLiteral("from")).toString(), FigureOf(input, QStringLiteral("pin")).value_or(0),
          FigureOf(input, QStringLiteral("taken"))};
}

LedgerOutput OutputOf(const QJsonObject& output) {
  return {FigureOf(output, QStringLiteral("pushed")), FigureOf(output, QStringLiteral("dropped")),
          FigureOf(output, QStringLiteral("taken")), FigureOf(output, QStringLiteral("waiting"))};
}

LedgerBlock BlockOf(const QJsonObject& object) {
  LedgerBlock block{object.value(QStringLiteral("name")).toString(),
                    object.value(QStringLiteral("type")).toString(),
                    FigureOf(object, QStringLiteral("received")),
                    FigureOf(object, QStringLiteral("waiting")),
                    FigureOf(object, QStringLiteral("missing")),
                    FigureOf(object, QStringLiteral("made")),
                    {},
                    {},
                    {}};
  const QJsonObject became = object.value(QStringLiteral("became")).toObject();
  for (const QString& fate : became.keys()) {
    block.became.emplace_back(fate, FigureOf(became, fate));
  }
  for (const QJsonValue& input : object.value(QStringLiteral("inputs")).toArray()) {
    block.inputs.push_back(InputOf(input.toObject()));
  }
  for (const QJsonValue& output : object.value(QStringLiteral("outputs")).toArray()) {
    block.outputs.push_back(OutputOf(output.toObject()));
  }
  return block;
}

}  // namespace

QString LedgerQuery() {
  return QueryText({{QStringLiteral("cmd"), QStringLiteral("get_ledger")}});
}

Read<Ledger> ReadLedger(const QString& answer) {
  const Read<QJsonDocument> document = ReadJson(answer);
  return document.value ? LedgerOf(document.value->object().value(QStringLiteral("ledger")))
                        : Read<Ledger>{{}, document.fault};
}

Read<Ledger> LedgerOf(const QJsonValue& value) {
  const QJsonObject object = value.toObject();
  const QJsonValue blocks = object.value(QStringLiteral("blocks"));
  if (!blocks.isArray()) {
    return {{}, QStringLiteral("it has no \"ledger\" with \"blocks\"")};
  }
  Ledger ledger;
  for (const QJsonValue& block : blocks.toArray()) {
    ledger.blocks.push_back(BlockOf(block.toObject()));
  }
  const QJsonValue balanced = object.value(QStringLiteral("balanced"));
  if (balanced.isBool()) {
    ledger.balanced = balanced.toBool();
  }
  return {ledger, {}};
}

Figure Sum(Figure left, Figure right) {
  return left && right ? Figure(static_cast<qint64>(static_cast<quint64>(*left) + static_cast<quint64>(*right)))
                       : std::nullopt;
}

Figure Difference(Figure left, Figure right) {
  return left && right ? Figure(static_cast<qint64>(static_cast<quint64>(*left) - static_cast<quint64>(*right)))
                       : std::nullopt;
}

}  // namespace korvax::client
