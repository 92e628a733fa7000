#include "tests/unit/configuration/CheckText.h"

#include "configuration/ConfigurationSchema.h"
#include "configuration/SchemaWalk.h"
#include "tests/support/Json.h"

#include <QFile>

#include <gtest/gtest.h>

namespace test {

namespace {

QStringList Lines(const korvax::CheckReport& report) {
  QStringList lines;
  for (const korvax::Finding& finding : report.findings) {
    lines << korvax::FindingLine(QString(), finding).mid(1);
  }
  EXPECT_EQ(report.errors + report.warnings, lines.size() + report.notShown);
  return lines;
}

}  // namespace

QByteArray ProjectFile(const QString& path) {
  QFile file(QStringLiteral(KORVAX_PROJECT_DIR "/") + path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return file.readAll();
}

QJsonObject ProjectConfiguration(const QString& path) {
  return Object(ProjectFile(path));
}

QStringList FindingsIn(const QByteArray& text) {
  return Lines(korvax::CheckConfiguration(text));
}

QStringList SchemaFindingsIn(const QByteArray& text) {
  const QJsonObject configuration = Object(text);
  const korvax::PositionIndex positions(text);
  korvax::FindingList findings(configuration, positions);
  korvax::SchemaWalk(findings).Check(configuration, korvax::ConfigurationSchema());
  return Lines(findings.Report());
}

std::string Joined(const QStringList& lines) {
  return lines.join(QLatin1Char('\n')).toStdString();
}

}  // namespace test
