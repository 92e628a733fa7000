#include "tests/support/WaitFor.h"
#include "tests/system/HighVoltageText.h"
#include "tests/system/SystemTest.h"

#include <numeric>

namespace test {

namespace {

// The simulated board, whose energies a source reads all the while, and an HV block on it.
class HighVoltageTest : public SystemTest {
protected:
  void SetUp() override {
    installation.AddBoardLibrary(KORVAX_SIMULATOR, QStringLiteral("libCAENDig2Sim.so"));
    configuration = WithHighVoltage(configuration);
  }

  QString AskByPath(const QByteArray& args) { return AskOver(byPath_, args); }
  QString AskByName(const QByteArray& args) { return AskOver(byName_, args); }

  const QString HvBlock = QStringLiteral("processing/0/filter_chain/0/chain/2");
  const QString Empty = QString::fromLatin1("");
  const QByteArray SwitchOn = R"({"cmd":"hv_global_on"})";
  const QByteArray SwitchOff = R"({"cmd":"hv_global_off"})";
  const QByteArray GetAll = R"({"cmd":"get_all_ch_values","param":"all"})";
  const QByteArray GetReadOnly = R"({"cmd":"get_all_ch_values","param":"read_only"})";
  const QString AllOff =
      QStringLiteral(R"({"response":"ok","Set":[20.0,30.0],"On":0,"Voltage":[0.0,0.0],"State":[off,off]})");
  const QString AllOn =
      QStringLiteral(R"({"response":"ok","Set":[20.0,30.0],"On":1,"Voltage":[20.0,30.0],"State":[on,on]})");

private:
  static QString AskOver(TestClient& client, const QByteArray& args) {
    EXPECT_TRUE(client.IsConnected() || client.Connect());
    const std::optional<QString> answer = client.Ask(Query(QStringLiteral("Hardware/Digitizer"), args));
    EXPECT_TRUE(answer.has_value()) << args.constData();
    return answer.value_or(QStringLiteral("no answer"));
  }

  TestClient byPath_{QStringLiteral("query_by_json")};
  TestClient byName_{QStringLiteral("supply")};
};

TEST_F(HighVoltageTest, ClimbsAndComesDownWhenItIsSwitchedOverEitherRoute) {
  StartAndWaitUntilReady();
  EXPECT_EQ(AskByPath(GetAll), AllOff);
  EXPECT_EQ(AskByName(GetAll), AllOff);

  EXPECT_EQ(AskByPath(SwitchOn), Empty);
  EXPECT_TRUE(WaitFor([this] { return AskByName(GetAll) == AllOn; })) << qPrintable(AskByName(GetAll));
  EXPECT_EQ(AskByPath(GetReadOnly),
            QStringLiteral(R"({"data":[{"On":1},{"Voltage":[20.0,30.0],{"State":[on,on]]})"));

  EXPECT_EQ(AskByName(SwitchOff), Empty);
  EXPECT_TRUE(WaitFor([this] { return AskByPath(GetAll) == AllOff; })) << qPrintable(AskByPath(GetAll));
}

TEST_F(HighVoltageTest, EventsGoOnAfterSwitching) {
  StartAndWaitUntilReady();
  EXPECT_EQ(AskByName(SwitchOn), Empty);
  RunSpectrum();
  const auto total = [this] {
    const std::vector<int> counts = Counts(1);
    return std::accumulate(counts.begin(), counts.end(), 0);
  };
  EXPECT_TRUE(WaitFor([&] { return total() > 0; }));
  EXPECT_EQ(AskByPath(SwitchOff), Empty);
  constexpr int MoreThanWasUnderWay = 500;
  const int before = total();
  EXPECT_TRUE(WaitFor([&] { return total() > before + MoreThanWasUnderWay; }));
}

TEST_F(HighVoltageTest, ABlockWhoseBoardIsMissingAnswersTheErrorAndIgnoresSwitches) {
  Change(HvBlock + QStringLiteral("/sources/0/source"), QStringLiteral("Nobody"));
  StartAndWaitUntilReady();
  EXPECT_EQ(
      server.ErrorLines().count(QStringLiteral("Warning: a hv source block  \"supply\"  has been detected but "
                                               "the related board has not been found")),
      1);
  EXPECT_EQ(AskByName(SwitchOn), Empty);
  EXPECT_EQ(AskByName(GetAll), QStringLiteral(R"({"response":"error", "reason":"Board not connected"})"));
  EXPECT_EQ(AskByPath(GetAll), Empty) << "its path is that of the board that is missing";
}

TEST_F(HighVoltageTest, TooManyChannelsEndTheStart) {
  Change(HvBlock + QStringLiteral("/parameters/0/param_value"), 1025);
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_TRUE(server.ErrorLines().contains(QStringLiteral(
      R"(Processing group 0, chain "main", block "supply", "n_channels": expected at most 1024; found 1025)")))
      << server.ErrorLines().join(QLatin1Char('\n')).toStdString();
}

}  // namespace

}  // namespace test
