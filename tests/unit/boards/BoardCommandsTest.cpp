#include "boards/DigitizerBoard.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

class BoardCommands : public testing::Test {
protected:
  // "on" is enabled, "off" is not. Each command is {type, endpoint, path}.
  void Load(const std::vector<std::array<const char*, 3>>& commands) {
    QJsonArray list;
    for (const auto& [type, endpoint, path] : commands) {
      list << QJsonObject{{"command_type", type}, {"endpoint_type", endpoint}, {"path", path}};
    }
    board_.LoadEndpoints(test::Object(R"({"endpoints": [{"name": "on", "enable": true}, {"name": "off"}]})"));
    board_.LoadCommands({{"commands", list}});
  }

  // A start, stop, reset and config command for both endpoints, in a mixed order.
  void LoadFullSet() {
    Load({{"start", "off", "start-off"},
          {"start", "on", "start-on"},
          {"reset", "on", "reset-on"},
          {"stop", "on", "stop-on"},
          {"config", "on", "cfg-on"},
          {"config", "on", "cfg-on-2"},
          {"stop", "off", "stop-off"},
          {"config", "off", "cfg-off"},
          {"reset", "off", "reset-off"}});
  }

  // The commands that the vendor got, and forgets them.
  QStringList Sent() {
    QStringList sent;
    for (const QString& call : vendor_.Calls()) {
      sent << QString(call).remove("command ");
    }
    vendor_.ClearCalls();
    return sent;
  }

  test::FakeVendor vendor_;
  test::LogCapture log_;
  DigitizerBoard board_{vendor_.Lookup()};
};

TEST_F(BoardCommands, LoadEndpointsReplacesTheListAndKeepsDisabledOnes) {
  EXPECT_TRUE(board_.LoadEndpoints(test::Object(R"({"endpoints": [{"name": "old"}]})")));
  EXPECT_TRUE(board_.LoadEndpoints(
      test::Object(R"({"endpoints": [{"name": "a", "enable": true}, {"name": "b", "enable": false}, 5]})")));
  ASSERT_EQ(board_.Endpoints().size(), 3U);
  EXPECT_EQ(board_.Endpoints()[0].name, QString("a"));
  EXPECT_TRUE(board_.Endpoints()[0].enabled);
  EXPECT_EQ(board_.Endpoints()[1].name, QString("b"));
  EXPECT_FALSE(board_.Endpoints()[1].enabled);
  EXPECT_EQ(board_.Endpoints()[2].name, QString());
}

TEST_F(BoardCommands, MissingOrMistypedListsReadAsEmpty) {
  for (const char* entry :
       {"{}", R"({"endpoints": {}, "commands": {}})", R"({"endpoints": "x", "commands": 1})"}) {
    SCOPED_TRACE(entry);
    EXPECT_TRUE(board_.LoadEndpoints(test::Object(entry)));
    board_.LoadCommands(test::Object(entry));
    EXPECT_TRUE(board_.Endpoints().empty());
    EXPECT_TRUE(board_.Commands().empty());
  }
}

TEST_F(BoardCommands, EveryCommandIsListedAndAttachedToTheFirstEndpointOfItsName) {
  board_.LoadEndpoints(test::Object(R"({"endpoints": [{"name": "e"}, {"name": "e"}, {"name": "f"}]})"));
  board_.LoadCommands(test::Object(R"({"commands": [
      {"name": "1", "command_type": "start", "endpoint_type": "e"},
      {"name": "2", "command_type": "start", "endpoint_type": "E"},
      {"name": "3", "command_type": "config_all", "endpoint_type": "f"},
      {"name": "4", "command_type": "odd", "endpoint_type": "f"}, 7]})"));
  ASSERT_EQ(board_.Commands().size(), 5U);
  const std::vector<bool> attached = {true, false, true, true, false};
  for (std::size_t i = 0; i < attached.size(); ++i) {
    EXPECT_EQ(board_.Commands()[i].attached, attached[i]) << i;
  }
  ASSERT_EQ(board_.Endpoints()[0].startCommands.size(), 1U);
  EXPECT_TRUE(board_.Endpoints()[0].startCommands[0].attached);
  EXPECT_TRUE(board_.Endpoints()[1].startCommands.empty());
  const BoardEndpoint& f = board_.Endpoints()[2];
  EXPECT_TRUE(f.startCommands.empty() && f.stopCommands.empty() && f.configCommands.empty() &&
              f.resetCommands.empty());
}

TEST_F(BoardCommands, ACommandWithoutEndpointTypeAttachesToAnEndpointWithoutName) {
  board_.LoadEndpoints(test::Object(R"({"endpoints": [{}]})"));
  board_.LoadCommands(test::Object(R"({"commands": [{"command_type": "stop"}]})"));
  EXPECT_TRUE(board_.Commands()[0].attached);
  EXPECT_EQ(board_.Endpoints()[0].stopCommands.size(), 1U);
}

TEST_F(BoardCommands, ConfigureStopsConfiguresAndStartsEachEndpointInOrder) {
  LoadFullSet();
  board_.ConfigureBoard();
  EXPECT_EQ(Sent(), (QStringList{"stop-on", "cfg-on", "cfg-on-2", "start-on", "stop-off", "cfg-off"}));
}

TEST_F(BoardCommands, StopSendsTheStopCommandsOfEveryEndpoint) {
  LoadFullSet();
  board_.StopEndpoints();
  EXPECT_EQ(Sent(), (QStringList{"stop-on", "stop-off"}));
}

TEST_F(BoardCommands, ArmResetsAndStartsEnabledEndpointsOnly) {
  LoadFullSet();
  board_.ArmEndpoints();
  EXPECT_EQ(Sent(), (QStringList{"reset-on", "start-on"}));
}

TEST_F(BoardCommands, StartUpSequenceRepeatsStopAndStart_isKept) {
  LoadFullSet();
  board_.ConfigureBoard();
  board_.StopEndpoints();
  board_.ArmEndpoints();
  EXPECT_EQ(Sent(), (QStringList{"stop-on", "cfg-on", "cfg-on-2", "start-on", "stop-off", "cfg-off", "stop-on",
                                 "stop-off", "reset-on", "start-on"}));
}

TEST_F(BoardCommands, ConfigAllReplacesTheUnattachedConfigCommands) {
  Load({{"config", "", "c1"},
        {"config", "", "c2"},
        {"config_all", "", "all"},
        {"config", "", "c3"},
        {"stop", "on", "stop-on"}});
  board_.ConfigureBoard();
  EXPECT_EQ(Sent(), (QStringList{"all", "stop-on"}));
}

TEST_F(BoardCommands, EveryConfigAllIsSentInOrderAttachedOrNot) {
  Load({{"config_all", "on", "all-1"}, {"config_all", "nowhere", "all-2"}, {"config", "", "c"}});
  board_.ConfigureBoard();
  EXPECT_EQ(Sent(), (QStringList{"all-1", "all-2"}));
}

TEST_F(BoardCommands, WithoutConfigAllTheUnattachedConfigCommandsAreSentFirst) {
  Load({{"config", "on", "cfg-on"}, {"config", "", "c1"}, {"config", "nowhere", "c2"}, {"start", "", "s"}});
  board_.ConfigureBoard();
  EXPECT_EQ(Sent(), (QStringList{"c1", "c2", "cfg-on"}));
}

TEST_F(BoardCommands, AStartCommandOfADisabledEndpointIsNeverSent) {
  Load({{"start", "off", "start-off"}});
  board_.ConfigureBoard();
  board_.ArmEndpoints();
  EXPECT_TRUE(Sent().isEmpty());
}

TEST_F(BoardCommands, UnattachedStartStopAndResetCommandsAreNeverSent) {
  Load({{"start", "x", "a"}, {"stop", "x", "b"}, {"reset", "x", "c"}, {"odd", "x", "d"}});
  board_.ConfigureBoard();
  board_.StopEndpoints();
  board_.ArmEndpoints();
  EXPECT_TRUE(Sent().isEmpty());
}

TEST_F(BoardCommands, FailingSendsAreIgnoredAndNothingIsLogged) {
  LoadFullSet();
  vendor_.result = -9;
  board_.StopEndpoints();
  EXPECT_EQ(Sent(), (QStringList{"stop-on", "stop-off"}));
  vendor_.missing = {"CAENDig2_SendCommandByQuery"};
  board_.ConfigureBoard();
  board_.ArmEndpoints();
  EXPECT_TRUE(Sent().isEmpty());
  EXPECT_TRUE(log_.Lines().isEmpty());
}

}  // namespace
