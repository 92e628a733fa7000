#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace korvax {

/// The "args" of a client's query, an array of objects. Empty for a text that doesn't parse or has none.
class QueryArgs {
public:
  explicit QueryArgs(const QString& message);

  /// The whole message; empty for a text that is no JSON object.
  const QJsonObject& Message() const { return message_; }
  const QJsonArray& Elements() const { return elements_; }

  /// What the last element that has `key` gives for it: its text, or empty when it is no text there. Empty when
  /// no element has it.
  QString Text(const char* key) const;

private:
  QJsonObject message_;
  QJsonArray elements_;
};

}  // namespace korvax
