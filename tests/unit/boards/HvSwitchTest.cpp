#include "tests/unit/boards/HvQueriesFixture.h"

namespace {

TEST_F(HvQueries, OnAndOffSendOneCommandAndThenConfigureTheBoard) {
  LoadCommands();
  MakeBound();
  for (const char* way : {"on", "off"}) {
    SCOPED_TRACE(way);
    vendor_.ClearCalls();
    EXPECT_EQ(AnswerTo(QString(R"({"args": [{"cmd": "hv_global_%1"}]})").arg(way)), "");
    EXPECT_EQ(vendor_.Calls(), QStringList{QString("command commands\\global_%1").arg(way)} + ConfigureCalls);
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(HvQueries, AFailingSwitchCommandStillConfiguresTheBoard) {
  LoadCommands();
  MakeBound();
  vendor_.result = -9;
  EXPECT_EQ(AnswerTo(R"({"args": [{"cmd": "hv_global_on"}]})"), "");
  EXPECT_EQ(vendor_.Calls(), QStringList{"command commands\\global_on"} + ConfigureCalls);
  vendor_.ClearCalls();
  vendor_.missing = {"CAENDig2_SendCommandByQuery"};
  MakeBound();
  EXPECT_EQ(AnswerTo(R"({"args": [{"cmd": "hv_global_off"}]})"), "");
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

TEST_F(HvQueries, SwitchingWithoutABoardDoesNothing) {
  LoadCommands();
  Make(R"("name": "hv")");
  EXPECT_EQ(AnswerTo(R"({"args": [{"cmd": "hv_global_on"}]})"), "");
  EXPECT_EQ(AnswerTo(R"({"args": [{"cmd": "hv_global_off"}]})"), "");
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

}  // namespace
