#include "configuration/Words.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace korvax {

namespace {

constexpr int LongestShown = 60;
constexpr int MostCandidates = 100;  // finding the nearest of more takes too long

// The value as the only element of an array, without the brackets.
QString JsonText(const QJsonValue& value) {
  const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
  return QString::fromUtf8(array.mid(1, array.size() - 2));
}

// The number of letters to add, leave out or change.
int EditDistance(const QString& left, const QString& right) {
  std::vector<int> row(static_cast<std::size_t>(right.size()) + 1);
  std::iota(row.begin(), row.end(), 0);
  for (int l = 0; l < left.size(); ++l) {
    int diagonal = row[0];
    row[0] = l + 1;
    for (int r = 0; r < right.size(); ++r) {
      const auto next = static_cast<std::size_t>(r) + 1;
      const int changed = diagonal + (left[l] == right[r] ? 0 : 1);
      diagonal = row[next];
      row[next] = std::min({changed, row[next] + 1, row[next - 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

QString Quoted(const QString& text) {
  QString shown = text.size() > LongestShown ? text.left(LongestShown) + QChar(0x2026) : text;
  for (QChar& character : shown) {
    if (!character.isPrint() && character.unicode() >= 0x7F) {
      character = QLatin1Char(' ');
    }
  }
  return JsonText(shown);
}

QString ValueText(const QJsonValue& value) {
  switch (value.type()) {
    case QJsonValue::Undefined:
      return QStringLiteral("nothing");
    case QJsonValue::Object:
      return QStringLiteral("an object");
    case QJsonValue::Array:
      return value.toArray().isEmpty() ? QStringLiteral("an empty array") : QStringLiteral("an array");
    case QJsonValue::String:
      return Quoted(value.toString());
    default:
      return JsonText(value);
  }
}

QString Difference(const QString& expected, const QString& found) {
  return QStringLiteral("expected ") + expected + QStringLiteral("; found ") + found;
}

QString NearestText(const QString& text, const QStringList& candidates) {
  QString nearest;
  int least = std::min(text.size(), 12) / 3 + 1;
  if (text.size() > LongestShown || candidates.size() > MostCandidates) {
    return nearest;
  }
  const QString wanted = text.toLower();
  for (const QString& candidate : candidates) {
    // No distance is below the difference of the lengths.
    if (candidate.size() > LongestShown || std::abs(candidate.size() - text.size()) >= least) {
      continue;
    }
    const int distance = EditDistance(wanted, candidate.toLower());
    if (distance < least) {
      least = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

QString Suggestion(const QString& text, const QStringList& candidates) {
  const QString nearest = NearestText(text, candidates);
  return nearest.isEmpty() ? QString()
                           : QStringLiteral(" (did you mean ") + Quoted(nearest) + QStringLiteral("?)");
}

}  // namespace korvax
