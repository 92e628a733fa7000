#include "tests/support/WaitFor.h"
#include "tests/system/SystemTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace test {

namespace {

// The first groups of all that the pattern finds in a text.
QStringList Captured(const QString& text, const char* pattern) {
  const QRegularExpression expression(
      QString::fromUtf8(pattern),
      QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
  QStringList captured;
  for (auto matches = expression.globalMatch(text); matches.hasNext();) {
    captured << matches.next().captured(1);
  }
  return captured;
}

QString TextOf(const char* file) {
  QFile text(QStringLiteral(KORVAX_PROJECT_DIR "/") + QLatin1String(file));
  EXPECT_TRUE(text.open(QIODevice::ReadOnly));
  return QString::fromUtf8(text.readAll());
}

// What a reader types, block by block.
QStringList TypedBlocks() {
  return Captured(TextOf("README.md"), "^```sh\\n(.*?)^```$");
}

// The paths of the blocks that the demo starts.
QStringList StartedBlocks() {
  const QString script = TextOf("scripts/demo");
  const QString chains = Captured(script, "^readonly chains=([^\\n]*)").value(0);
  QStringList paths;
  for (const QString& path :
       Captured(Captured(script, "^readonly counting=\\((.*?)^\\)").value(0), "\"\\$chains(.*?)\"")) {
    paths << chains + path;
  }
  return paths;
}

// The numbers of counts in the headings of pictures, as they are printed.
QStringList CountsIn(const QString& output) {
  return Captured(output, "· (\\S+) counts ·");
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

  // What the typed commands print.
  QString Type(const QString& block) {
    QProcess shell;
    shell.setWorkingDirectory(installation.WorkingFolder());
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-e"), QStringLiteral("-x"), QStringLiteral("-c"), block});
    EXPECT_TRUE(shell.waitForFinished(100'000)) << qPrintable(block);
    EXPECT_EQ(shell.exitCode(), 0) << qPrintable(block) << shell.readAllStandardError().toStdString();
    const QString output = QString::fromUtf8(shell.readAllStandardOutput());
    EXPECT_FALSE(output.isEmpty()) << qPrintable(block);
    return output;
  }

  // Starts the blocks as the demo does, and waits until each picture of the tour has counts.
  void CountFor(const QStringList& pictures) {
    const QStringList started = StartedBlocks();
    ASSERT_EQ(started.size(), 5) << "scripts/demo";
    for (const QString& block : started) {
      Type(QStringLiteral("build/bin/korvaxctl start ") + block);
    }
    for (const QString& picture : pictures) {
      EXPECT_TRUE(WaitFor([&] { return CountsIn(Type(picture)).value(0, "0") != QLatin1String("0"); }))
          << qPrintable(picture);
    }
  }
};

TEST_F(ReadmeTest, EveryCommandOfTheTourWorksAsItIsPrinted) {
  const QStringList blocks = TypedBlocks();
  ASSERT_EQ(blocks.size(), 3) << "look around, take a run, replay it";
  const QStringList pictures = Captured(blocks[0], "^(\\S+ (?:spectrum|image|position|times) [^\\n]*)");
  ASSERT_EQ(pictures.size(), 4) << qPrintable(blocks[0]);
  server.Start({QStringLiteral("-c"), QStringLiteral("examples/demo.json")});
  ASSERT_TRUE(server.WaitUntilReady());
  CountFor(pictures);
  const QString shown = Type(blocks[0]);
  EXPECT_EQ(CountsIn(shown).size(), pictures.size()) << qPrintable(shown);
  EXPECT_FALSE(CountsIn(shown).contains(QStringLiteral("0"))) << qPrintable(shown);
  Type(blocks[1]);
  EndServer();
  const QString replayed = Type(blocks[2]);
  EXPECT_EQ(CountsIn(replayed).size(), 1) << qPrintable(replayed);
  EXPECT_NE(CountsIn(replayed).value(0), QStringLiteral("0")) << qPrintable(replayed);
}

}  // namespace

}  // namespace test
