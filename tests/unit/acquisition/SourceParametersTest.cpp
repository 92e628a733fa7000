#include "acquisition/PauseLength.h"
#include "framework/KorvaxPayload_Energy.h"
#include "tests/unit/acquisition/SourceFixture.h"

#include <QElapsedTimer>

#include <cmath>
#include <limits>

namespace {

constexpr double HalfAMonthMs = 1e9;

class SourceParameters : public SourceFixture {
protected:
  SourceParameters() { block_.Add(EnergyRecord(1, 0, 100)); }

  double EnergyOfNextBlock() {
    Feed(block_);
    const DataMessage message = NextMessage();
    return message.batch ? message.batch->events.at(0).energy : -1.0;
  }

  test::RawBlock block_;
};

TEST(PauseLength, TruncatesTowardZeroToWholeMilliseconds) {
  const std::pair<double, unsigned long> rows[] = {
      {10.0, 10},
      {2.9, 2},
      {2.0, 2},
      {1.0, 1},
      {0.999, 0},
      {0.0, 0},
      {-0.5, 0},
      {-1000.0, 0},
      {3600000.5, 3600000},
      {1e300, 2147483647},
      {std::numeric_limits<double>::infinity(), 2147483647},
      {-std::numeric_limits<double>::infinity(), 0},
      {std::nan(""), 0},
  };
  for (const auto& [interval, milliseconds] : rows) {
    EXPECT_EQ(acquisition::PauseLength(interval), milliseconds) << interval;
  }
}

TEST_F(SourceParameters, EveryReadIsFollowedByThePauseWhetherItSucceedsOrNot) {
  Make(Configuration("energy", "endpoints\\energy"));
  SetParameter("download_interval", 120.9);
  QElapsedTimer timer;
  std::atomic<qint64> pauses[2] = {};
  reads_.Next([&](void*) {
    timer.start();
    return -1;
  });
  reads_.Next([&](void* holder) {
    pauses[0] = timer.restart();
    block_.FillHolder(holder);
    return 0;
  });
  reads_.Next([&](void*) {
    pauses[1] = timer.restart();
    return -1;
  });
  source_->Run();
  ASSERT_TRUE(WaitForReads(4));
  EXPECT_GE(pauses[0], 119);  // a lower bound holds on a machine of any speed
  EXPECT_GE(pauses[1], 119);
}

TEST_F(SourceParameters, TheIntervalIsTenMillisecondsUnlessConfigured) {
  QElapsedTimer sinceRead;
  std::atomic<int> pauses = 0;
  std::atomic<qint64> shortestUs = std::numeric_limits<qint64>::max();
  vendor_.onRead = [&](void*) {
    if (sinceRead.isValid()) {
      shortestUs = std::min<qint64>(shortestUs, sinceRead.nsecsElapsed() / 1000);
      ++pauses;
    }
    sinceRead.start();
    return -1;
  };
  QJsonObject configuration = Configuration("energy", "endpoints\\energy");
  configuration.remove("parameters");
  Make(configuration).Run();
  // On a busy machine most pauses are longer than they should be, but not all.
  EXPECT_TRUE(test::WaitFor([&] { return pauses >= 20 && shortestUs < 12'000; }));
  source_->StopWorker();
  EXPECT_GE(shortestUs, 9'000);
}

TEST_F(SourceParameters, AChangedIntervalCountsFromTheNextPauseOn) {
  Make(Configuration("energy", "endpoints\\energy"));
  SetParameter("download_interval", HalfAMonthMs);
  source_->Run();
  ASSERT_TRUE(WaitForReads(1));
  SetParameter("download_interval", 0);  // while the first read is going on
  reads_.Next([](void*) { return -1; });
  EXPECT_TRUE(WaitForReads(2));
}

TEST_F(SourceParameters, AnIntervalThatIsNoNumberIsNoPause) {
  Make(Configuration("energy", "endpoints\\energy"));
  SetParameter("download_interval", HalfAMonthMs);
  SetParameter("download_interval", "5");
  source_->Run();
  reads_.Next([](void*) { return -1; });
  EXPECT_TRUE(WaitForReads(2));
}

TEST_F(SourceParameters, StopWorkerEndsALongPause) {
  Make(Configuration("energy", "endpoints\\energy"));
  SetParameter("download_interval", 1e300);
  Feed(block_);
  source_->Run();
  EXPECT_NE(NextMessage().batch, nullptr);
  source_->StopWorker();
  EXPECT_EQ(reads_.Begun(), 1);
}

TEST_F(SourceParameters, WithoutParametersEnergiesAreZero) {
  MakeRunning("energy");
  EXPECT_EQ(EnergyOfNextBlock(), 0.0);
}

TEST_F(SourceParameters, AConfiguredExpressionReachesTheWorker) {
  QJsonObject configuration = Configuration("energy", "endpoints\\energy");
  configuration["parameters"] = test::Array(R"([
      {"param_name": "download_interval", "param_value": 0},
      {"param_name": "energy_calibration_expression", "param_value": "x*7"},
      {"param_name": "energy_calibration_expression", "param_value": "x*3"},
      {"param_name": "nobody_knows", "param_value": 5}])");
  Make(configuration).Run();
  EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 300.0);  // the later entry counts
}

TEST_F(SourceParameters, AConfiguredSwitchToTheBoardsEnergyReachesTheWorker) {
  QJsonObject configuration = Configuration("energy", "endpoints\\energy");
  configuration["parameters"] = test::Array(R"([
      {"param_name": "energy_calibration_expression", "param_value": "x"},
      {"param_name": "use_board_kev", "param_value": true}])");
  Make(configuration).Run();
  EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 0.25);
}

TEST_F(SourceParameters, ANewExpressionCountsFromTheNextBlockOn) {
  MakeRunning("energy");
  EXPECT_EQ(EnergyOfNextBlock(), 0.0);
  const std::pair<const char*, double> rows[] = {{"x*2", 200.0}, {"x*", 0.0}, {"x+1", 101.0}, {"", 0.0}};
  for (const auto& [expression, energy] : rows) {
    SCOPED_TRACE(expression);
    EXPECT_TRUE(SetParameter("energy_calibration_expression", expression));
    EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), energy);
  }
}

TEST_F(SourceParameters, AnExpressionThatIsNoTextCountsAsNone) {
  MakeRunning("energy");
  SetParameter("energy_calibration_expression", "x");
  SetParameter("energy_calibration_expression", 5);
  EXPECT_EQ(EnergyOfNextBlock(), 0.0);
}

TEST_F(SourceParameters, AnExpressionWithCharactersOutsideLatin1GivesZeroAndTheSourceGoesOn) {
  MakeRunning("energy");
  for (const QString& expression :
       {QString("x") + QChar(0x0416), QString(QChar(0x0445)), QString("2*x+") + QChar(0x221E),
        QString("x+") + QChar(0xD83D) + QChar(0xDE00), QString("x") + QChar(0x2003) + "+1"}) {
    SetParameter("energy_calibration_expression", expression);
    EXPECT_EQ(EnergyOfNextBlock(), 0.0) << expression.toStdString();
    SetParameter("energy_calibration_expression", "x+1");
    EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 101.0);
  }
}

TEST_F(SourceParameters, TheBoardsEnergyCanBeSwitchedOnAndOffWhileReading) {
  MakeRunning("energy");
  SetParameter("energy_calibration_expression", "x");
  EXPECT_TRUE(SetParameter("use_board_kev", true));
  EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 0.25);
  EXPECT_TRUE(SetParameter("use_board_kev", false));
  EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 100.0);
  SetParameter("use_board_kev", true);
  SetParameter("use_board_kev", 1);  // no boolean: false
  EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 100.0);
}

TEST_F(SourceParameters, NamesAreComparedExactlyAndUnknownOnesIgnored) {
  MakeRunning("energy");
  EXPECT_TRUE(SetParameter("Energy_calibration_expression", "x"));
  EXPECT_TRUE(SetParameter("energy_calibration_expression ", "x"));
  EXPECT_TRUE(SetParameter("USE_BOARD_KEV", true));
  EXPECT_TRUE(SetParameter("", true));
  EXPECT_TRUE(source_->ParseParameters(QJsonValue()));
  EXPECT_TRUE(source_->ParseParameters(test::Object(R"({"parameters": {}})")));
  EXPECT_EQ(EnergyOfNextBlock(), 0.0);
}

TEST_F(SourceParameters, AnExpressionOfOneMegabyteGivesZeroAndTheSourceGoesOn) {
  MakeRunning("energy");
  SetParameter("energy_calibration_expression", QString("x") + QString("+x").repeated(1 << 19));
  EXPECT_EQ(EnergyOfNextBlock(), 0.0);
  SetParameter("energy_calibration_expression", QString(8192, '(') + QString(8192, ')'));
  EXPECT_EQ(EnergyOfNextBlock(), 0.0);
  SetParameter("energy_calibration_expression", "x");
  EXPECT_DOUBLE_EQ(EnergyOfNextBlock(), 100.0);
}

}  // namespace
