#include "server/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace CommandLine {

QString Process(QCoreApplication& application) {
  QCoreApplication::setApplicationName(QStringLiteral("korvax-boards-server"));
  QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Velmor - Korvax board server"));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption config(
      {QStringLiteral("c"), QStringLiteral("config")},
      QCoreApplication::translate("main", "Load configuration file <korvax_config.json>."),
      QCoreApplication::translate("main", "korvax_config.json"));
  parser.addOption(config);
  parser.process(application);
  return parser.isSet(config) ? parser.value(config) : QStringLiteral("../korvax_config_qdcpos.json");
}

}  // namespace CommandLine
