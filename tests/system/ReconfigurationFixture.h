#pragma once

#include "tests/support/WaitFor.h"
#include "tests/system/RunTest.h"

#include <QFile>

#include <algorithm>

namespace test {

/// Two boards, "BOARD0" that a run is recorded of and "BOARD1", and the configuration file changing under the
/// server that runs. Both have a threshold, "100" in the beginning.
class ReconfigurationFixture : public RunTest {
protected:
  ReconfigurationFixture() : other(Made(installation.Path(QStringLiteral("other")))) {
    Change(QStringLiteral("Hardware/0/board_name"), QStringLiteral("BOARD0"));
    Change(QStringLiteral("processing/0/filter_chain/0/chain/0/sources/0/source"), QStringLiteral("BOARD0"));
    Change(QStringLiteral("Hardware/1"), At(configuration, QStringLiteral("Hardware/0")));
    Change(QStringLiteral("Hardware/1/board_name"), QStringLiteral("BOARD1"));
    Change(QStringLiteral("Hardware/1/board_connection_string"), other.Connection());
  }

  /// The configuration as a file that sets thresholds.
  QByteArray WithThresholds(int first, int second) const {
    QJsonValue changed = configuration;
    const auto set = [&changed](const char* entry, int value) {
      const QString path = QStringLiteral("Hardware/%1/configs/0/elements/0/value").arg(QLatin1String(entry));
      changed = With(changed, path, QString::number(value));
    };
    set("0", first);
    set("1", second);
    return ToText(changed);
  }
  /// Writes over the file that is there.
  void Overwrite(const QByteArray& text) const { installation.WriteConfiguration(text); }
  /// Puts another file in its place, as editors do.
  void Replace(const QByteArray& text) const {
    const QString next = installation.Path(QStringLiteral("next.json"));
    Installation::Write(next, text);
    EXPECT_EQ(std::rename(qPrintable(next), qPrintable(installation.ConfigurationPath())), 0);
  }

  /// The thresholds that a board was told, in order.
  static std::vector<int> ThresholdsOf(const ScriptedFeed& feed) {
    std::vector<int> thresholds;
    for (const QString& call : feed.CallsOf(QStringLiteral("set"))) {
      if (call.contains(QLatin1String("\\par\\Thr="))) {
        thresholds.push_back(call.section(QLatin1Char('='), 1).toInt());
      }
    }
    return thresholds;
  }
  [[nodiscard]] bool FeedUntilThreshold(const ScriptedFeed& feed, int threshold) {
    return FeedUntil([&] { return ThresholdsOf(feed).back() == threshold; });
  }

  void StartRecording() {
    StartAndWaitUntilReady();
    EXPECT_EQ(StartRun(1), Success);
    ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  }
  /// The run goes on, has lost nothing, and its file is whole.
  void ExpectUnharmedRun() {
    const qint64 stored = StoredEvents();
    ASSERT_TRUE(FeedUntil([&] { return StoredEvents() > stored; }));
    EXPECT_EQ(Status(), 1);
    EXPECT_EQ(Counts()["dropped"].toInt(), 0);
    EXPECT_EQ(Counts()["failed"].toInt(), 0);
    EndServer();
    const std::vector<int> energies = EnergiesOf(File(1, 0, Form::Binary), Form::Binary);
    EXPECT_EQ(energies.front(), 0);
    EXPECT_EQ(ExpectUnbroken(energies), board.CallsOf(QStringLiteral("free")).size() * BlockEvents);
  }

  int ReconfigurationsOf(const QString& name) const {
    return server.ErrorLines().count(QStringLiteral(" ---- RECONFIG BOARD:  \"%1\"  ----").arg(name));
  }

  const ScriptedFeed other;

private:
  static QString Made(const QString& folder) {
    EXPECT_TRUE(QDir().mkpath(folder));
    return folder;
  }
};

}  // namespace test
