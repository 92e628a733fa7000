#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace test {

namespace {

QStringList Steps(const QJsonValue& value) {
  QStringList steps = value.toObject().keys();
  for (int i = 0; i < value.toArray().size(); ++i) {
    steps << QString::number(i);
  }
  return steps;
}

QJsonValue WithStep(const QJsonValue& value, const QString& step, const QJsonValue& part) {
  if (value.isArray()) {
    QJsonArray array = value.toArray();
    if (part.isUndefined()) {
      array.removeAt(step.toInt());
    } else if (step.toInt() == array.size()) {
      array.append(part);
    } else {
      array.replace(step.toInt(), part);
    }
    return array;
  }
  QJsonObject object = value.toObject();
  object.insert(step, part);
  return object;
}

QJsonValue WithPart(const QJsonValue& value, const QStringList& path, const QJsonValue& part) {
  return path.isEmpty() ? part : WithStep(value, path[0], WithPart(At(value, {path[0]}), path.mid(1), part));
}

}  // namespace

std::vector<QStringList> AllPaths(const QJsonValue& whole) {
  std::vector<QStringList> paths;
  for (const QString& step : Steps(whole)) {
    paths.push_back({step});
    for (const QStringList& rest : AllPaths(At(whole, {step}))) {
      paths.push_back(QStringList{step} + rest);
    }
  }
  return paths;
}

QJsonValue At(const QJsonValue& whole, const QStringList& path) {
  QJsonValue value = whole;
  for (const QString& step : path) {
    value = value.isArray() ? value.toArray().at(step.toInt()) : value.toObject().value(step);
  }
  return value;
}

QJsonObject With(const QJsonObject& whole, const QStringList& path, const QJsonValue& value) {
  return WithPart(whole, path, value).toObject();
}

int LineOf(const QJsonObject& whole, const QStringList& path) {
  const QByteArray text = Text(With(whole, path, QStringLiteral("the place that is looked for")));
  return static_cast<int>(text.left(text.indexOf("the place that is looked for")).count('\n')) + 1;
}

QByteArray Text(const QJsonObject& whole) {
  return QJsonDocument(whole).toJson(QJsonDocument::Indented);
}

}  // namespace test
