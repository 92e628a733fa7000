#pragma once

#include "runfiles/ListFiles.h"
#include "tests/system/SystemTest.h"

#include <QDir>

#include <map>
#include <vector>

namespace test {

/// Base of the tests of runs with the whole program: the spectrum's place is taken by a dumper "dumper", and the
/// board hands out events on channel 0 whose energies are 0, 1, 2, ... in blocks.
class RunTest : public SystemTest {
protected:
  using Form = korvax::runfiles::Form;

  static constexpr int BlockEvents = 10;
  static constexpr const char* Types[] = {"BIN", "CSV", "JSON"};  // by Form

  RunTest();

  /// How the next run is recorded; also for a server that runs.
  void ConfigureRuns(Form form, int eventsPerFile, const QString& storage);
  void ConfigureRuns(Form form, int eventsPerFile) {
    ConfigureRuns(form, eventsPerFile, installation.StoragePath());
  }

  /// Asks the block of that name.
  QString Tell(const QString& block, const QString& query);
  QString Command(const char* command) { return Tell("commands", QStringLiteral(R"({"cmd":"%1"})").arg(command)); }
  QString StartRun(int run) {
    return Tell("commands", QStringLiteral(R"({"cmd":"start_dump","run_id":"%1"})").arg(run));
  }
  qint64 StoredEvents() { return Info()["stored_events"].toVariant().toLongLong(); }
  int Status() { return Info()["status"].toInt(); }
  QJsonObject Counts();

  void Feed();
  /// Hands out block after block until the condition holds.
  bool FeedUntil(const std::function<bool()>& condition);
  int FedEvents() const { return next_; }

  QString File(int run, int index, Form form, const QString& block = QStringLiteral("dumper")) const;
  /// The energies in a file whose whole records can all be read, with what is wrong behind them.
  static std::vector<int> EnergiesOf(const QString& path, Form form,
                                     std::optional<korvax::runfiles::FileFault>* fault = nullptr);
  /// A file of events that follow each other without a gap; gives their number.
  static int ExpectUnbroken(const std::vector<int>& energies);

private:
  QJsonObject Info();

  int next_ = 0;
  std::map<QString, std::unique_ptr<TestClient>> clients_;
};

/// "BIN", "CSV" or "JSON", for the names of tests.
std::string NameOfForm(const testing::TestParamInfo<korvax::runfiles::Form>& form);

}  // namespace test
