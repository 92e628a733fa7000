#pragma once

#include "tests/support/Installation.h"
#include "tests/support/LinesPrinting.h"
#include "tests/support/ServerProcess.h"
#include "tests/support/TestClient.h"
#include "tests/system/ConfigurationText.h"
#include "tests/system/ScriptedFeed.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace test {

/// Base of the tests of the whole program: a fresh installation with the scripted board's library, a valid
/// configuration to change and the server's process. At the end of every test the server must have ended by
/// itself or end with status 0 when it is told to, and must not have broken a sanitizer's rule.
class SystemTest : public testing::Test {
protected:
  static void SetUpTestSuite();
  SystemTest();
  void TearDown() override;

  static QString Library(const QString& target);  ///< a scripted library by its target's name

  /// Replaces one part of the configuration.
  void Change(const QString& path, const QJsonValue& value) { configuration = With(configuration, path, value); }
  /// Writes the configuration and starts the server on it.
  void Start();
  /// The same and waits; a test can't go on without.
  void StartAndWaitUntilReady();
  /// Tells a server that runs to end, which it must with status 0 and in silence of the sanitizers.
  void EndServer();

  /// Asks the spectrum over a connection that stays open.
  QString Ask(const QByteArray& args);
  void RunSpectrum() { EXPECT_EQ(Ask(R"({"cmd":"run_control","status":"freerun"})"), Success); }
  std::vector<int> Counts(int channel);
  /// Waits until the condition holds; in the meantime the board hands out further blocks, of one event on
  /// channel 7: a wake-up that comes while a worker drains is lost by design, and the next block makes up for it.
  bool WaitForData(const std::function<bool()>& condition);
  /// Waits until every bin from first on has been counted once, `count` bins in all; no other bin counts.
  void ExpectEachBinOnce(int channel, int first, int count);

  /// What start-up logs first, whatever follows.
  QStringList FirstLines() const;
  /// What it logs until the board answers.
  QStringList LinesUntilBoard() const;
  /// All that the unchanged configuration logs.
  QStringList LinesUntilReady() const;

  static const QString Success;
  static const QString SpectrumPath;

  Installation installation;
  ScriptedFeed board;
  QJsonValue configuration;
  ServerProcess server;

private:
  std::unique_ptr<TestClient> client_;
};

/// A query of a generic-route block.
QString Query(const QString& path, const QByteArray& args);

}  // namespace test
