#pragma once

#include "tests/system/RunTest.h"

#include <QFile>
#include <QJsonDocument>

namespace test {

/// Base of the tests of the demo configuration, with the simulated boards' library and a storage of the test's
/// own.
class DemoFixture : public RunTest {
protected:
  void ConfigureDemo(Form form) {
    installation.AddBoardLibrary(QStringLiteral(KORVAX_SIMULATOR), QStringLiteral("libCAENDig2Sim.so"));
    QFile demo(QStringLiteral(KORVAX_PROJECT_DIR "/examples/demo.json"));
    ASSERT_TRUE(demo.open(QIODevice::ReadOnly));
    configuration = QJsonDocument::fromJson(demo.readAll()).object();
    ConfigureRuns(form, 1'000'000);
  }

  /// Asks a block by "<its chain>/<its name>".
  QString AskBlock(const char* block, const QByteArray& args) {
    const QString path = QLatin1String(block);
    const QString chain = path.section(QLatin1Char('/'), 0, 0);
    const QString name = path.section(QLatin1Char('/'), 1);
    return Tell(QStringLiteral("query_by_json"),
                Query(QStringLiteral("processing/0/filter_chain/%1/chain/%2").arg(chain, name), args));
  }
};

}  // namespace test
