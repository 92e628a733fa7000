#pragma once

#include "recording/DataDumper.h"
#include "tests/support/Json.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/recording/ListFixture.h"

namespace test {

inline ChainContext DumperContext() {
  ChainContext context;
  context.fullPath = "processing/0/filter_chain/main/chain/dumper";
  return context;
}

/// A real dumper with its worker, fed by a pin of the test.
class DumperFixture : public testing::Test {
protected:
  DumperFixture() { block.Inputs().front()->Connect(&feed); }

  void Start(const QString& runId, const QString& type = "CSV") {
    ASSERT_TRUE(QDir(folder.path()).mkpath(runId));
    block.ConfigureDump(1'000, type, folder.path());
    block.StartDump(runId);
  }
  template <typename... Records>
  void Feed(Records... records) {
    ASSERT_TRUE(feed.Push(MessageOf(std::move(records)...)));
  }
  QString Ask(QString query) {
    QString answer;
    block.InterpretMessage(&query, &answer);
    return answer;
  }
  QString Info() {
    QString info;
    block.GetRunInfo(&info);
    return info;
  }
  QJsonObject Counts() { return Array(Ask(R"({"cmd":"get_dump_counts"})").toUtf8())[0].toObject(); }
  [[nodiscard]] bool WaitForCount(const char* name, int count) {
    return WaitFor([&] {
      block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return Counts()[QLatin1String(name)].toInt() == count;
    });
  }
  std::string Bytes(const QString& file) const { return FileBytes(folder.filePath(file)); }

  QTemporaryDir folder;
  LogCapture log;
  PinOutput feed{"energy"};
  DataDumper block{nullptr, DumperContext(), Object(R"({"name":"dumper","data_type":"energy"})")};
};

}  // namespace test
