#include "tests/unit/acquisition/SourceFixture.h"

#include <QMetaMethod>
#include <QThread>

namespace {

class SourceTest : public SourceFixture {};

TEST_F(SourceTest, HasItsTypeWordItsPropertiesAndOnePinNamedAfterTheDataType) {
  const Source& source = Make(Configuration("energy_pair", "endpoints\\energy"));
  EXPECT_EQ(source.BlockType(), QString("source"));
  EXPECT_FALSE(source.IsDumpCapable());
  EXPECT_EQ(source.property("Name").toString(), QString("src"));
  EXPECT_EQ(source.property("FullPath").toString(), QString("processing/0/x"));
  EXPECT_TRUE(source.Inputs().empty());
  ASSERT_EQ(source.Outputs().size(), 1U);
  EXPECT_EQ(source.Outputs()[0]->Name(), QString("energy_pair"));
  EXPECT_EQ(source.Fault(), QString());
}

TEST_F(SourceTest, OffersRunStopFlushAndStartInThisOrder) {
  const QMetaObject& meta = Source::staticMetaObject;
  QStringList slotNames;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
    if (meta.method(i).methodType() == QMetaMethod::Slot) {
      slotNames << meta.method(i).name();
    }
  }
  EXPECT_EQ(slotNames, (QStringList{"Run", "Stop", "Flush", "Start"}));
}

TEST_F(SourceTest, StopSendsTheStopCommandsInOrder) {
  Make(Configuration("energy", "endpoints\\energy")).Stop();
  EXPECT_EQ(vendor_.Calls(), (QStringList{"command stop-energy-1", "command stop-energy-2"}));
}

TEST_F(SourceTest, FlushSendsTheResetCommandsInOrder) {
  Make(Configuration("energy", "endpoints\\energy")).Flush();
  EXPECT_EQ(vendor_.Calls(), (QStringList{"command reset-energy-1", "command reset-energy-2"}));
}

TEST_F(SourceTest, StartSendsTheStartCommandsOfAnEnabledEndpointInOrder) {
  Make(Configuration("energy", "endpoints\\energy")).Start();
  EXPECT_EQ(vendor_.Calls(), (QStringList{"command start-energy-1", "command start-energy-2"}));
}

TEST_F(SourceTest, StartSendsNothingToADisabledEndpointWhileStopAndFlushDo) {
  Source& source = Make(Configuration("energy", "endpoints\\wave"));
  source.Start();
  EXPECT_TRUE(vendor_.Calls().isEmpty());
  source.Stop();
  source.Flush();
  EXPECT_EQ(vendor_.Calls(), (QStringList{"command stop-wave-1", "command stop-wave-2", "command reset-wave-1",
                                          "command reset-wave-2"}));
}

TEST_F(SourceTest, FailingCommandsAreIgnoredAndNotLogged) {
  vendor_.result = -5;
  Source& source = Make(Configuration("energy", "endpoints\\energy"));
  source.Start();
  source.Stop();
  source.Flush();
  EXPECT_EQ(vendor_.Calls().size(), 6);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceTest, NothingIsReadBeforeRun) {
  Make(Configuration("energy", "endpoints\\energy"));
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

TEST_F(SourceTest, AFailedBindingLeavesThePinButNoWorker) {
  Source& source = Make(Configuration("energy", "endpoint\\energy"));
  EXPECT_EQ(log_.Lines(), QStringList{"Warning: source block  \"src\"  Invalid endpoint config parameter"});
  ASSERT_EQ(source.Outputs().size(), 1U);
  EXPECT_EQ(source.Outputs()[0]->Name(), QString("energy"));
  EXPECT_EQ(source.Fault(), QString());
  source.Run();
  source.Start();
  source.Stop();
  source.Flush();
  EXPECT_TRUE(SetParameter("energy_calibration_expression", "x"));
  EXPECT_TRUE(SetParameter("use_board_kev", true));
  source.StopWorker();
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

TEST_F(SourceTest, ASourceWithoutABoardRunsAndFindsNothing) {
  QJsonObject configuration = Configuration("waveform", "");
  configuration["sources"] = QJsonArray();
  Source& source = Make(configuration);
  source.Run();
  source.Start();
  source.Stop();
  source.Flush();
  EXPECT_TRUE(test::WaitFor([this] { return log_.Count("W ERR") >= 3; }));
  source.StopWorker();
  EXPECT_EQ(log_.Count("W OK"), 0);
  EXPECT_TRUE(vendor_.Calls().isEmpty());
  EXPECT_FALSE(HasMessage());
}

TEST_F(SourceTest, ASourceWithoutABoardListRunsToo) {
  Source source(nullptr, {}, test::Object(R"({"data_type": "energy", "sources": [{"pin": "x"}]})"));
  source.Run();
  source.StopWorker();
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceTest, WrongTypesEverywhereStillConstruct) {
  for (const char* json :
       {R"({"name": 1, "data_type": [], "sources": {}, "parameters": 5})", "[]", "{}",
        R"({"parameters": [1, "x", null, {"param_name": 3}, {"param_name": "download_interval"}]})",
        R"({"sources": [], "parameters": [{"param_name": "download_interval", "param_value": []},
                               {"param_name": "energy_calibration_expression", "param_value": 7},
                               {"param_name": "use_board_kev", "param_value": "true"}]})"}) {
    SCOPED_TRACE(json);
    const QJsonDocument document = test::Document(json);
    const Source source(nullptr, {&boards_, nullptr, {}, {}}, document.object());
    EXPECT_EQ(source.Name(), QString());
    EXPECT_EQ(source.Outputs().size(), 1U);
  }
}

TEST_F(SourceTest, RunGivesTheWorkerTheHighestPriorityAndRoomForTheLongestExpression) {
  std::atomic<int> priority = -1;
  std::atomic<uint> stack = 0;
  reads_.Next([&](void*) {
    priority = QThread::currentThread()->priority();
    stack = QThread::currentThread()->stackSize();
    return -1;
  });
  MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(2));
  EXPECT_EQ(priority, static_cast<int>(QThread::TimeCriticalPriority));
  EXPECT_EQ(stack, 64U * 1024 * 1024);
}

TEST_F(SourceTest, SlotsReachTheBoardWhileTheWorkerWaitsInARead) {
  Source& source = MakeRunning("energy");
  ASSERT_TRUE(WaitForReads(1));
  source.Stop();
  EXPECT_EQ(vendor_.Calls(),
            (QStringList{"read endpoints\\energy", "command stop-energy-1", "command stop-energy-2"}));
}

}  // namespace
