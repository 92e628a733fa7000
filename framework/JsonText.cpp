#include "framework/JsonText.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <optional>
#include <vector>

namespace korvax {

namespace {

constexpr std::size_t DeepestNesting = 1024;  // Qt refuses what is deeper

// Where a key stands in the text, with its quotation marks.
struct Place {
  int begin = 0;
  int end = 0;
};

// Finds the keys to rename. What is no JSON may have any: with them renamed, it is none either.
class KeyScan {
public:
  explicit KeyScan(const QByteArray& text) : text_(text) {
    for (int i = 0; i < text_.size(); ++i) {
      i = Take(i);
    }
  }

  // In the order of the text.
  std::vector<Place> Renamed() && {
    std::sort(renamed_.begin(), renamed_.end(), [](const Place& a, const Place& b) { return a.begin < b.begin; });
    return std::move(renamed_);
  }

private:
  // An object or array that isn't over yet.
  struct Level {
    bool isObject;
    bool isAtKey;
    QString key;                     // of the member in hand
    Place place;                     // of that key
    QHash<QString, Place> branches;  // the members before it that are objects or arrays
  };

  // What stands at i; gives where its last byte is.
  int Take(int i) {
    switch (text_.at(i)) {
      case '{':
      case '[':
        if (levels_.size() == DeepestNesting) {
          return text_.size();
        }
        levels_.push_back({text_.at(i) == '{', true, {}, {}, {}});
        break;
      case '}':
      case ']':
        Leave();
        break;
      case ',':
        if (!levels_.empty()) {
          levels_.back().isAtKey = true;
        }
        break;
      case '"':
        return TakeText(i);
      default:
        break;
    }
    return i;
  }

  int TakeText(int begin) {
    int last = begin + 1;
    while (last < text_.size() && text_.at(last) != '"') {
      last += text_.at(last) == '\\' ? 2 : 1;
    }
    const bool isKey = !levels_.empty() && levels_.back().isObject && levels_.back().isAtKey;
    return isKey && last < text_.size() && !EnterMember({begin, last + 1}) ? text_.size() : last;
  }

  // False for a key that Qt doesn't read: it refuses the whole then, whatever follows.
  bool EnterMember(Place place) {
    const std::optional<QString> key = KeyAt(place);
    if (!key) {
      return false;
    }
    Level& level = levels_.back();
    level.isAtKey = false;
    level.key = *key;
    level.place = place;
    const auto replaced = level.branches.find(level.key);
    if (replaced != level.branches.end()) {
      renamed_.push_back(*replaced);
      level.branches.erase(replaced);
    }
    if (level.key.startsWith(QChar(0))) {
      renamed_.push_back(place);
    }
    return true;
  }

  void Leave() {
    if (!levels_.empty()) {
      levels_.pop_back();
    }
    if (levels_.empty()) {
      return;
    }
    Level& level = levels_.back();
    if (level.isObject && !level.isAtKey && !level.key.startsWith(QChar(0))) {
      level.branches.insert(level.key, level.place);
    }
  }

  std::optional<QString> KeyAt(Place place) const {
    const QByteArray quoted = text_.mid(place.begin, place.end - place.begin);
    const bool isPlain = std::all_of(quoted.begin(), quoted.end(),
                                     [](char byte) { return byte >= ' ' && byte <= '~' && byte != '\\'; });
    if (isPlain) {
      return QString(QLatin1String(quoted.constData() + 1, quoted.size() - 2));
    }
    const QJsonDocument document = QJsonDocument::fromJson('[' + quoted + ']');
    return document.isNull() ? std::nullopt : std::optional(document.array()[0].toString());
  }

  const QByteArray& text_;
  std::vector<Level> levels_;
  std::vector<Place> renamed_;
};

}  // namespace

QJsonDocument ParseJson(const QByteArray& text) {
  const std::vector<Place> renamed = KeyScan(text).Renamed();
  if (renamed.empty()) {
    return QJsonDocument::fromJson(text);
  }
  QByteArray distinct;
  int done = 0;
  for (std::size_t i = 0; i < renamed.size(); ++i) {
    distinct.append(text.constData() + done, renamed[i].begin - done);
    distinct.append("\"\\u0000").append(QByteArray::number(static_cast<qulonglong>(i))).append('"');
    done = renamed[i].end;
  }
  return QJsonDocument::fromJson(distinct.append(text.constData() + done, text.size() - done));
}

QString CompactJson(const QJsonObject& object) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

}  // namespace korvax
