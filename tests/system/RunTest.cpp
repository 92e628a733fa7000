#include "tests/system/RunTest.h"

#include "tests/support/Json.h"
#include "tests/support/WaitFor.h"
#include "tests/system/ChainText.h"

namespace test {

std::string NameOfForm(const testing::TestParamInfo<korvax::runfiles::Form>& form) {
  static constexpr const char* names[] = {"BIN", "CSV", "JSON"};
  return names[static_cast<int>(form.param)];
}

RunTest::RunTest() {
  configuration = WithDumper(configuration);
  ConfigureRuns(Form::Binary, 1'000'000);
}

void RunTest::ConfigureRuns(Form form, int eventsPerFile, const QString& storage) {
  Change(QStringLiteral("storage"), RunStorage(storage, Types[static_cast<int>(form)], eventsPerFile));
  installation.WriteConfiguration(ToText(configuration));
}

QString RunTest::Tell(const QString& block, const QString& query) {
  auto& client = clients_[block];
  if (client == nullptr) {
    client = std::make_unique<TestClient>(block);
  }
  EXPECT_TRUE(client->IsConnected() || client->Connect());
  const std::optional<QString> answer = client->Ask(query);
  EXPECT_TRUE(answer.has_value()) << qPrintable(query);
  return answer.value_or(QString());
}

QJsonObject RunTest::Info() {
  return Array(Command("get_run_info").toUtf8())[0].toObject();
}

QJsonObject RunTest::Counts() {
  return Array(Tell("dumper", R"({"cmd":"get_dump_counts"})").toUtf8())[0].toObject();
}

void RunTest::Feed() {
  board.FeedRamp(0, next_, BlockEvents);
  next_ += BlockEvents;
}

bool RunTest::FeedUntil(const std::function<bool()>& condition) {
  return WaitFor([&] {
    Feed();
    return condition();
  });
}

QString RunTest::File(int run, int index, Form form, const QString& block) const {
  static constexpr const char* Extensions[] = {"bin", "csv", "json"};
  return installation.StoragePath() +
         QStringLiteral("/%1/%2_%3.%4").arg(run).arg(block).arg(index).arg(Extensions[static_cast<int>(form)]);
}

std::vector<int> RunTest::EnergiesOf(const QString& path, Form form,
                                     std::optional<korvax::runfiles::FileFault>* fault) {
  const auto reader = korvax::runfiles::OpenList(path.toStdString(), form);
  std::vector<int> energies;
  korvax::runfiles::ListRecord record;
  while (reader->Next(record)) {
    energies.push_back(static_cast<int>(record.energyRaw));
  }
  if (fault != nullptr) {
    *fault = reader->Fault();
  } else {
    EXPECT_FALSE(reader->Fault()) << qPrintable(path) << ": " << reader->Fault()->Text();
  }
  return energies;
}

int RunTest::ExpectUnbroken(const std::vector<int>& energies) {
  for (std::size_t i = 1; i < energies.size(); ++i) {
    EXPECT_EQ(energies[i], energies[i - 1] + 1) << "event " << i;
  }
  return static_cast<int>(energies.size());
}

}  // namespace test
