#include "configuration/Place.h"

#include "configuration/Words.h"

#include <QJsonArray>

#include <algorithm>

namespace korvax {

namespace {

/// The arrays whose elements are levels of the file: each has a name, or only a number.
struct Level {
  QLatin1String array;
  QLatin1String nameKey;  // empty: its elements have no names
  QLatin1String word;     // instead of the array's own name, where the element has a name
};

const Level Levels[] = {
    {QLatin1String("Hardware"), QLatin1String("board_name"), QLatin1String("Hardware")},
    {QLatin1String("configs"), QLatin1String("name"), QLatin1String("configs")},
    {QLatin1String("elements"), QLatin1String("name"), QLatin1String("elements")},
    {QLatin1String("endpoints"), QLatin1String("name"), QLatin1String("endpoints")},
    {QLatin1String("commands"), QLatin1String("name"), QLatin1String("commands")},
    {QLatin1String("processing"), QLatin1String(), QLatin1String("processing")},
    {QLatin1String("filter_chain"), QLatin1String("name"), QLatin1String()},
    {QLatin1String("chain"), QLatin1String("name"), QLatin1String("block")},
    {QLatin1String("sources"), QLatin1String(), QLatin1String("sources")},
    {QLatin1String("parameters"), QLatin1String(), QLatin1String("parameters")},
};

const Level* LevelOf(const QString& array) {
  const auto* const found =
      std::find_if(std::begin(Levels), std::end(Levels), [&](const Level& level) { return array == level.array; });
  return found == std::end(Levels) ? nullptr : found;
}

bool IsElementNumber(const QString& step) {
  return !step.isEmpty() && step.size() <= 10 && std::all_of(step.begin(), step.end(), [](QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
  });
}

// Where the file has an object instead of an array, the step to an element is a key: any text.
QString Numbered(const QString& array, const QString& number) {
  return array + QLatin1Char('[') + (IsElementNumber(number) ? number : Quoted(number)) + QLatin1Char(']');
}

QString ElementText(const Level& level, const QString& number, const QJsonValue& element) {
  const QString name = element.toObject()[level.nameKey].toString();
  if (name.isEmpty()) {
    return Numbered(level.word == QLatin1String("block") ? QStringLiteral("block ") : QString(level.array),
                    number);
  }
  if (level.array == QLatin1String("filter_chain")) {
    return Quoted(name);
  }
  return (level.word == level.array ? Numbered(level.array, number) : QString(level.word)) + QLatin1Char(' ') +
         Quoted(name);
}

QJsonValue Next(const QJsonValue& value, const QString& step) {
  return value.isArray() ? value.toArray().at(step.toInt()) : value.toObject().value(step);
}

// The value of a parameter is found by the parameter's name, as if that were its key.
bool IsNamedValue(const QJsonValue& parameter, const QString& key) {
  return key == QLatin1String("param_value") && !parameter.toObject()["param_name"].toString().isEmpty();
}

QString KeyText(const QJsonValue& level, const QStringList& steps) {
  const QString name = level.toObject()["param_name"].toString();
  QString text = QStringLiteral("key ") + Quoted(IsNamedValue(level, steps.first()) ? name : steps.first());
  for (const QString& step : steps.mid(1)) {
    text = Numbered(text, step);
  }
  return text;
}

}  // namespace

QJsonValue ValueAt(const QJsonObject& configuration, const QStringList& path) {
  QJsonValue value = configuration;
  for (const QString& step : path) {
    value = Next(value, step);
  }
  return value;
}

QString PlaceText(const QJsonObject& configuration, const QStringList& path) {
  QStringList words;
  QJsonValue level = configuration;
  int step = 0;
  while (step + 1 < path.size()) {
    const Level* const known = LevelOf(path[step]);
    if (known != nullptr) {
      level = Next(Next(level, path[step]), path[step + 1]);
      if (!IsNamedValue(level, path.value(step + 2))) {
        words << ElementText(*known, path[step + 1], level);
      }
      step += 2;
    } else if (path[step] == QLatin1String("storage") || path[step] == QLatin1String("network")) {
      level = Next(level, path[step]);
      words << path[step++];
    } else {
      break;
    }
  }
  if (words.isEmpty()) {
    words << QStringLiteral("top level");
  }
  if (step < path.size()) {
    words << KeyText(level, path.mid(step));
  }
  return words.join(QLatin1Char(' '));
}

}  // namespace korvax
