#include "tests/system/SystemTest.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace test {

namespace {

QByteArray ProjectFile(const char* name) {
  QFile file(QStringLiteral(KORVAX_PROJECT_DIR "/") + QLatin1String(name));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
  return file.readAll();
}

// The lines of the README that a reader types into a second terminal.
QStringList ClientCommands() {
  static const QRegularExpression line(QStringLiteral("^ *(build/bin/korvaxctl .*)$"),
                                       QRegularExpression::MultilineOption);
  QStringList commands;
  for (auto matches = line.globalMatch(QString::fromUtf8(ProjectFile("README.md"))); matches.hasNext();) {
    commands << matches.next().captured(1);
  }
  return commands;
}

class ReadmeTest : public SystemTest {};

TEST_F(ReadmeTest, EveryClientCommandWorksOnTheDemoConfigurationAsItIsPrinted) {
  installation.AddBoardLibrary(KORVAX_SIMULATOR, QStringLiteral("libCAENDig2Sim.so"));
  QByteArray demo = ProjectFile("examples/demo.json");
  ASSERT_TRUE(demo.contains("\"demo-storage\""));
  installation.WriteConfiguration(
      demo.replace("\"demo-storage\"", '"' + installation.StoragePath().toUtf8() + '"'));
  server.Start({QStringLiteral("-c"), installation.ConfigurationPath()});
  ASSERT_TRUE(server.WaitUntilReady());
  const QStringList commands = ClientCommands();
  EXPECT_GE(commands.size(), 4);
  for (QString command : commands) {
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), command.replace(QStringLiteral("build/bin/korvaxctl"), KORVAXCTL)});
    ASSERT_TRUE(shell.waitForFinished(60'000)) << qPrintable(command);
    EXPECT_EQ(shell.exitCode(), 0) << qPrintable(command) << shell.readAllStandardError().toStdString();
    EXPECT_FALSE(shell.readAllStandardOutput().isEmpty()) << qPrintable(command);
  }
}

}  // namespace

}  // namespace test
