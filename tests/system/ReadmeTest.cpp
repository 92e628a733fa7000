#include "tests/system/SystemTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace test {

namespace {

// What a reader types, block by block.
QStringList TypedBlocks() {
  static const QRegularExpression block(
      QStringLiteral("^```sh\\n(.*?)^```$"),
      QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
  QFile readme(QStringLiteral(KORVAX_PROJECT_DIR "/README.md"));
  EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(readme.readAll());
  QStringList blocks;
  for (auto matches = block.globalMatch(text); matches.hasNext();) {
    blocks << matches.next().captured(1);
  }
  return blocks;
}

// The server's working folder looks like a clone of the project where everything is built.
class ReadmeTest : public SystemTest {
protected:
  ReadmeTest() {
    installation.AddBoardLibrary(KORVAX_SIMULATOR, QStringLiteral("libCAENDig2Sim.so"));
    QDir clone(installation.WorkingFolder());
    EXPECT_TRUE(clone.mkdir(QStringLiteral("build")) && clone.mkdir(QStringLiteral("demo-storage")));
    EXPECT_TRUE(
        QFile::link(installation.Path(QStringLiteral("bin")), clone.filePath(QStringLiteral("build/bin"))));
    EXPECT_TRUE(QFile::link(KORVAXCTL, clone.filePath(QStringLiteral("build/bin/korvaxctl"))));
    EXPECT_TRUE(QFile::link(KORVAX_PROJECT_DIR "/examples", clone.filePath(QStringLiteral("examples"))));
  }

  void Type(const QString& block) {
    QProcess shell;
    shell.setWorkingDirectory(installation.WorkingFolder());
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-e"), QStringLiteral("-x"), QStringLiteral("-c"), block});
    ASSERT_TRUE(shell.waitForFinished(100'000)) << qPrintable(block);
    EXPECT_EQ(shell.exitCode(), 0) << qPrintable(block) << shell.readAllStandardError().toStdString();
    EXPECT_FALSE(shell.readAllStandardOutput().isEmpty()) << qPrintable(block);
  }
};

TEST_F(ReadmeTest, EveryCommandOfTheTourWorksAsItIsPrinted) {
  const QStringList blocks = TypedBlocks();
  ASSERT_EQ(blocks.size(), 3) << "look around, take a run, replay it";
  server.Start({QStringLiteral("-c"), QStringLiteral("examples/demo.json")});
  ASSERT_TRUE(server.WaitUntilReady());
  Type(blocks[0]);
  Type(blocks[1]);
  EndServer();
  Type(blocks[2]);
}

}  // namespace

}  // namespace test
