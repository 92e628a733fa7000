#include "tests/docs/MarkdownPage.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <vector>

namespace {

// The tests' names of one file as "Suite.Name". A row of a table of parameters that is named as a kept oddity
// counts as a test of the suite before it.
QSet<QString> TestNamesIn(const QString& text) {
  static const QRegularExpression pattern(
      QStringLiteral(R"re(TEST(?:_[FP])?\(\s*(\w+),\s*(\w+)\)|"(\w+_isKept)")re"));
  QSet<QString> names;
  QString suite;
  for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    const QString row = match.captured(3);
    if (row.isEmpty()) {
      suite = match.captured(1);
    }
    names << suite + QLatin1Char('.') + (row.isEmpty() ? match.captured(2) : row);
  }
  return names;
}

QSet<QString> TestNames() {
  QSet<QString> names;
  QDirIterator files(QStringLiteral(KORVAX_PROJECT_DIR "/tests"), {QStringLiteral("*.cpp")}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    names += TestNamesIn(QString::fromUtf8(file.readAll()));
  }
  return names;
}

// The tests that each row of the page names.
std::vector<QSet<QString>> TestsOfRows() {
  static const QRegularExpression lastCell(QStringLiteral(R"(\| ([^|]+) \|$)"));
  static const QRegularExpression name(QStringLiteral(R"(`(\w+\.\w+)`)"));
  std::vector<QSet<QString>> rows;
  for (const QString& line :
       test::MarkdownPage(QStringLiteral("docs/kept-oddities.md")).Text().split(QLatin1Char('\n'))) {
    if (!line.startsWith(QLatin1String("| ")) || line.startsWith(QLatin1String("| what"))) {
      continue;
    }
    QSet<QString>& tests = rows.emplace_back();
    for (auto names = name.globalMatch(lastCell.match(line).captured(1)); names.hasNext();) {
      tests << names.next().captured(1);
    }
    EXPECT_FALSE(tests.isEmpty()) << "no test in the row: " << qPrintable(line);
  }
  return rows;
}

TEST(KeptOdditiesPage, EveryRowNamesTestsThatExist) {
  const QSet<QString> tests = TestNames();
  const auto rows = TestsOfRows();
  EXPECT_GT(rows.size(), 80U);
  for (const QSet<QString>& row : rows) {
    for (const QString& name : row) {
      EXPECT_TRUE(tests.contains(name)) << qPrintable(name);
    }
  }
}

TEST(KeptOdditiesPage, EveryTestOfAKeptOddityStandsInARow) {
  QSet<QString> onPage;
  for (const QSet<QString>& row : TestsOfRows()) {
    onPage += row;
  }
  for (const QString& name : TestNames()) {
    EXPECT_TRUE(!name.endsWith(QLatin1String("_isKept")) || onPage.contains(name)) << qPrintable(name);
  }
}

}  // namespace
