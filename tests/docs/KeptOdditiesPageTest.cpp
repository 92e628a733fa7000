#include "tests/docs/MarkdownPage.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace {

// Every test's name as "Suite.Name".
QSet<QString> TestNames() {
  static const QRegularExpression pattern(QStringLiteral(R"(TEST(?:_[FP])?\(\s*(\w+),\s*(\w+)\))"));
  QSet<QString> names;
  QDirIterator files(QStringLiteral(KORVAX_PROJECT_DIR "/tests"), {QStringLiteral("*.cpp")}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    for (auto matches = pattern.globalMatch(QString::fromUtf8(file.readAll())); matches.hasNext();) {
      const QRegularExpressionMatch match = matches.next();
      names << match.captured(1) + QLatin1Char('.') + match.captured(2);
    }
  }
  return names;
}

TEST(KeptOdditiesPage, EveryRowNamesATestThatExists) {
  static const QRegularExpression row(QStringLiteral(R"(\| `(\w+\.\w+)` \|)"));
  const test::MarkdownPage page(QStringLiteral("docs/kept-oddities.md"));
  const QSet<QString> tests = TestNames();
  int rows = 0;
  for (const QString& line : page.Text().split(QLatin1Char('\n'))) {
    if (!line.startsWith(QLatin1String("| ")) || line.startsWith(QLatin1String("| what"))) {
      continue;
    }
    const QRegularExpressionMatch match = row.match(line);
    ASSERT_TRUE(match.hasMatch()) << "no test in the row: " << qPrintable(line);
    EXPECT_TRUE(tests.contains(match.captured(1))) << qPrintable(match.captured(1));
    ++rows;
  }
  EXPECT_GT(rows, 0);
}

}  // namespace
