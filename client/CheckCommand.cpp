#include "client/CheckCommand.h"

#include "client/TextFit.h"
#include "configuration/ConfigurationCheck.h"
#include "configuration/ConfigurationSchema.h"

namespace korvax::client {

namespace {

Ending ReportEnding(const QString& file, const CheckReport& report, Console& console) {
  const QString warnings =
      report.warnings == 0
          ? QString()
          : QStringLiteral(", ") + Counted(static_cast<quint64>(report.warnings), QStringLiteral("warning"));
  if (report.errors > 0) {
    return {ExitCode::BadFile,
            QStringLiteral("%1: %2%3.")
                .arg(file, Counted(static_cast<quint64>(report.errors), QStringLiteral("error")), warnings)};
  }
  console.Print(QStringLiteral("%1: no errors%2").arg(file, warnings));
  return {};
}

}  // namespace

Ending RunCheck(const CheckRequest& request, Console& console) {
  if (request.schema) {
    console.Write(QString::fromUtf8(ConfigurationSchemaText()));
    return {};
  }
  const QString file = Harmless(request.file);
  const std::variant<CheckReport, QString> result = CheckConfigurationFile(request.file);
  if (const auto* fault = std::get_if<QString>(&result)) {
    return {ExitCode::BadFile, QStringLiteral("%1 can't be read: %2.").arg(file, *fault)};
  }
  const auto& report = std::get<CheckReport>(result);
  QStringList lines;
  for (const Finding& finding : report.findings) {
    lines << FindingLine(file, finding);
  }
  if (report.notShown > 0) {
    lines << QStringLiteral("%1: %2 more")
                 .arg(file, Counted(static_cast<quint64>(report.notShown), QStringLiteral("finding")));
  }
  if (!lines.isEmpty()) {
    console.Print(lines.join(QLatin1Char('\n')));
  }
  return ReportEnding(file, report, console);
}

}  // namespace korvax::client
