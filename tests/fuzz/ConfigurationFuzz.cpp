// The input is the text of a configuration file: looked through as `korvaxctl check` does, and parsed as the
// server does, which must come to the same as Qt's parser.

#include "configuration/ConfigurationCheck.h"
#include "framework/JsonText.h"
#include "tests/fuzz/FuzzProcess.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cstdlib>

namespace {

QJsonValue WithoutNulKeys(const QJsonValue& value) {
  if (value.isArray()) {
    QJsonArray array = value.toArray();
    for (int i = 0; i < array.size(); ++i) {
      array[i] = WithoutNulKeys(array.at(i));
    }
    return array;
  }
  if (!value.isObject()) {
    return value;
  }
  QJsonObject object;
  const QJsonObject members = value.toObject();
  for (auto member = members.begin(); member != members.end(); ++member) {
    if (!member.key().startsWith(QChar(0))) {
      object[member.key()] = WithoutNulKeys(member.value());
    }
  }
  return object;
}

QJsonValue Content(const QJsonDocument& document) {
  return document.isObject() ? WithoutNulKeys(document.object()) : WithoutNulKeys(document.array());
}

// Which of several values of a key Qt keeps is certain in objects of up to 16 members only.
bool IsCertain(const QByteArray& text) {
  return text.count(':') <= 16;
}

void CompareParsers(const QByteArray& text) {
  const QJsonDocument document = korvax::ParseJson(text);
  const QJsonDocument expected = QJsonDocument::fromJson(text);
  if (document.isNull() != expected.isNull() || document.isObject() != expected.isObject() ||
      (IsCertain(text) && Content(document) != Content(expected))) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
  const korvax::CheckReport report = korvax::CheckConfiguration(text);
  for (const korvax::Finding& finding : report.findings) {
    korvax::FindingLine(QStringLiteral("configuration.json"), finding);
  }
  CompareParsers(text);
  return 0;
}
