#include "tests/unit/configuration/FindingsCase.h"

#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

namespace test {

namespace {

QJsonObject Edited(const FindingsCase& row) {
  QJsonObject whole = ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
  for (const auto& [place, value] : row.edits) {
    QString path = QLatin1String(place);
    path.replace(QLatin1String("EVENTS/"), QLatin1String("processing/0/filter_chain/0/chain/"));
    path.replace(QLatin1String("OTHERS/"), QLatin1String("processing/1/filter_chain/0/chain/"));
    whole = With(whole, path.split('/'), value);
  }
  return whole;
}

}  // namespace

void ExpectFindings(const FindingsCase& row) {
  QStringList expected;
  for (const char* text : row.findings) {
    expected << QString::fromUtf8(text);
  }
  QStringList found;
  for (const QString& line : FindingsIn(Text(Edited(row)))) {
    found << line.section(": ", 1);
  }
  EXPECT_EQ(Joined(found), Joined(expected));
}

}  // namespace test
