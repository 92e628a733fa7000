#include "configuration/ConfigurationCheck.h"

#include "configuration/BindingCheck.h"
#include "configuration/BoardCheck.h"
#include "configuration/ConfigurationSchema.h"
#include "configuration/FindingList.h"
#include "configuration/LinkCheck.h"
#include "configuration/NetworkCheck.h"
#include "configuration/ParameterCheck.h"
#include "configuration/SchemaWalk.h"
#include "configuration/Words.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace korvax {

namespace {

// The server reads the file as a text: line ends become "\n", and bytes that are no UTF-8 other characters.
QByteArray AsServerReads(QByteArray text) {
  return QString::fromUtf8(text.replace("\r\n", "\n")).toUtf8();
}

bool BeginsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

CheckReport SyntaxReport(const QByteArray& text, const QJsonParseError& error) {
  const QByteArray before = text.left(error.offset);
  const QByteArray lastLine = before.mid(before.lastIndexOf('\n') + 1);
  Finding finding;
  finding.line = static_cast<int>(before.count('\n')) + 1;
  finding.column = static_cast<int>(std::count_if(lastLine.begin(), lastLine.end(), BeginsCharacter)) + 1;
  finding.text = QStringLiteral("this is no JSON: ") + error.errorString();
  return {{finding}, 1, 0, 0};
}

void CheckAll(const QJsonObject& configuration, const PositionIndex& positions, FindingList& findings) {
  for (const PositionIndex::Duplicate& duplicate : positions.Duplicates()) {
    findings.AddAtLine(Severity::Warning, duplicate.line, duplicate.path,
                       Difference(QStringLiteral("each key once, as the last of several counts"),
                                  QStringLiteral("one that stands here before")));
  }
  SchemaWalk(findings).Check(configuration, ConfigurationSchema());
  CheckNetwork(configuration, findings);
  const Layout layout = Layout::Of(configuration);
  CheckBoards(layout, findings);
  CheckBindings(layout, findings);
  LinkCheck(layout, findings).Check();
  CheckParameters(layout, ConfigurationSchema(), findings);
}

}  // namespace

CheckReport CheckConfiguration(const QByteArray& text) {
  const QByteArray json = AsServerReads(text);
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (error.error != QJsonParseError::NoError) {
    return SyntaxReport(json, error);
  }
  const PositionIndex positions(json);
  const QJsonObject configuration = document.object();
  FindingList findings(configuration, positions);
  if (document.isObject()) {
    CheckAll(configuration, positions, findings);
  } else {
    findings.Fail({}, QStringLiteral("an object"), ValueText(document.array()));
  }
  return findings.Report();
}

std::variant<CheckReport, QString> CheckConfigurationFile(const QString& path) {
  if (path.isEmpty()) {
    return QStringLiteral("its name is empty");
  }
  const QFileInfo info(path);
  if (info.exists() && !info.isFile()) {
    return QStringLiteral("expected a regular file");  // reading from a pipe or a device may never end
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    return file.errorString();
  }
  QByteArray text;
  while (text.size() <= LargestConfiguration) {
    const QByteArray part = file.read(LargestConfiguration + 1 - text.size());
    if (part.isEmpty()) {
      break;
    }
    text += part;
  }
  if (file.error() != QFileDevice::NoError) {
    return file.errorString();
  }
  if (text.size() > LargestConfiguration) {
    return QStringLiteral("it is larger than %1 MiB, unlike any configuration").arg(LargestConfiguration >> 20);
  }
  return CheckConfiguration(text);
}

QString FindingLine(const QString& file, const Finding& finding) {
  const QString column = finding.column > 0 ? QStringLiteral(":%1").arg(finding.column) : QString();
  const QString severity =
      finding.severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
  return QStringLiteral("%1:%2%3: %4: %5")
      .arg(file, QString::number(finding.line), column, severity, finding.text);
}

}  // namespace korvax
