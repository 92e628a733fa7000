#include "tests/unit/simulator/BoardHarness.h"

using namespace korvax::sim;

namespace {

class HighVoltageOfABoard : public testing::Test {
protected:
  HighVoltageOfABoard() {
    board_.Set("\\Channel0\\HVSet", "1000");
    board_.Set("\\Channel0\\HVRamp", "100");
  }
  std::string Volt(int channel = 0) { return board_.Get("\\Channel" + std::to_string(channel) + "\\HVVoltage"); }
  std::string State() { return board_.Get("\\Channel0\\HVState"); }

  TestClock clock_;
  BoardHarness board_{"sim:array?channels=2", clock_.Get()};
};

}  // namespace

TEST_F(HighVoltageOfABoard, ClimbsToItsSetPointAfterGlobalOn) {
  clock_.AdvanceMs(60'000);
  EXPECT_EQ(Volt(), "0.0");
  board_.Send("commands\\global_on");
  EXPECT_EQ(board_.Get("\\HVOn"), "1");
  EXPECT_EQ(Volt(), "0.0");
  EXPECT_EQ(State(), "ramp_up");
  clock_.AdvanceMs(2'500);
  EXPECT_EQ(Volt(), "250.0");
  EXPECT_EQ(board_.Get("\\Channel0\\HVCurrent"), "25.0");
  EXPECT_EQ(Volt(1), "125.0");  // its own, slower ramp
  clock_.AdvanceMs(7'500);
  EXPECT_EQ(Volt(), "1000.0");
  EXPECT_EQ(State(), "on");
  clock_.AdvanceMs(3'600'000);
  EXPECT_EQ(Volt(), "1000.0");
}

TEST_F(HighVoltageOfABoard, GoesDownAfterGlobalOffFromWhereverItIs) {
  board_.Send("commands\\global_on");
  clock_.AdvanceMs(4'000);
  board_.Send("commands\\global_off");
  EXPECT_EQ(board_.Get("\\HVOn"), "0");
  EXPECT_EQ(State(), "ramp_down");
  clock_.AdvanceMs(1'000);
  EXPECT_EQ(Volt(), "300.0");
  clock_.AdvanceMs(10'000);
  EXPECT_EQ(Volt(), "0.0");
  EXPECT_EQ(State(), "off");
}

TEST_F(HighVoltageOfABoard, ApproachesANewSetPointAtTheSameSpeed) {
  board_.Send("commands\\global_on");
  clock_.AdvanceMs(20'000);
  board_.Set("\\Channel0\\HVSet", "700");
  clock_.AdvanceMs(1'000);
  EXPECT_EQ(Volt(), "900.0");
  EXPECT_EQ(State(), "ramp_down");
  board_.Set("\\Channel0\\HVRamp", "10");
  clock_.AdvanceMs(1'000);
  EXPECT_EQ(Volt(), "890.0");
}

TEST_F(HighVoltageOfABoard, LeavesASwitchedOffChannelDown) {
  board_.Set("\\Channel0\\HVEnable", "0");
  board_.Send("\\commands\\GLOBAL_ON");
  clock_.AdvanceMs(30'000);
  EXPECT_EQ(Volt(), "0.0");
  EXPECT_EQ(State(), "off");
  EXPECT_EQ(Volt(1), "800.0");
  board_.Set("\\Channel0\\HVEnable", "1");
  clock_.AdvanceMs(1'000);
  EXPECT_EQ(Volt(), "100.0");
}
