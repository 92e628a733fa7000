#include "runfiles/FileSummary.h"
#include "tests/support/WaitFor.h"
#include "tests/system/DemoFixture.h"

namespace test {

namespace {

using korvax::runfiles::Form;
using korvax::runfiles::Kind;

// A run of the demo configuration: events, waves and rates of one board, each recorded by a block of its own.
class DemoRunTest : public DemoFixture, public testing::WithParamInterface<Form> {
protected:
  void SetUp() override { ConfigureDemo(GetParam()); }

  int Recorded(const QString& block) {
    const QString query = QStringLiteral(R"({"cmd":"get_dump_counts"})");
    return CountsIn(Tell(block, query))["recorded"].toInt();
  }
  int RecordedRates() {
    return CountsIn(AskBlock("rates1/rates1", R"({"cmd":"get_dump_counts"})"))["recorded"].toInt();
  }
  static QJsonObject CountsIn(const QString& answer) {
    return QJsonDocument::fromJson(answer.toUtf8()).array()[0].toObject();
  }

  void ExpectGood(const QString& block, Kind kind, int leastRecords) {
    const QString path = File(1, 0, GetParam(), block);
    const auto summary = korvax::runfiles::Summarise(path.toStdString());
    ASSERT_TRUE(summary.type) << qPrintable(path);
    EXPECT_EQ(summary.type->kind, kind);
    EXPECT_FALSE(summary.fault) << qPrintable(path) << ": " << summary.fault->Text();
    EXPECT_GE(summary.records, static_cast<std::uint64_t>(leastRecords)) << qPrintable(path);
  }
};

TEST_P(DemoRunTest, EndedByASignalLeavesWholeFilesOfEventsWavesAndRates) {
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);
  int events = 0;
  int waves = 0;
  int rates = 0;
  ASSERT_TRUE(WaitFor([&] {
    events = Recorded(QStringLiteral("dumper1"));
    waves = Recorded(QStringLiteral("scope1"));
    rates = RecordedRates();
    return events > 0 && waves > 1 && rates > 1;
  }));
  EndServer();
  ExpectGood(QStringLiteral("dumper1"), Kind::List, events);
  ExpectGood(QStringLiteral("scope1"), Kind::Waves, waves);
  ExpectGood(QStringLiteral("rates1"), Kind::Rates, rates);
}

INSTANTIATE_TEST_SUITE_P(EveryForm, DemoRunTest, testing::Values(Form::Binary, Form::Csv, Form::Json), NameOfForm);

}  // namespace

}  // namespace test
