#include "server/HardwareSetup.h"

#include "boards/DigitizerBoard.h"
#include "tests/support/Json.h"
#include "tests/unit/server/LibraryFolder.h"

namespace {

class HardwareSetupTest : public LibraryFolder {
protected:
  HardwareSetupTest() {
    AddLibrary("libCAENDig2Sim.so");
    plugins_.LoadAll(Folder());
  }

  std::optional<int> Connect(const char* hardware) {
    return HardwareSetup::ConnectBoards(test::Array(hardware), plugins_, boards_);
  }
  QString Calls() { return CallsOf(*plugins_.Find("libCAENDig2Sim")); }

  BoardList boards_;
};

TEST_F(HardwareSetupTest, AnEnabledBoardIsLoggedOpenedAndListed) {
  EXPECT_FALSE(Connect(R"([{"enable": true, "id": "17", "board_name": "Left", "board_type": "scintillator",
                            "board_family": "fam", "board_plugin": "LIBcaenDIG2sim",
                            "board_connection_string": "sim://1"}])"));
  EXPECT_EQ(log_.Lines(),
            (QStringList{"Connecting to board:  \"17\"", "\tName: \"Left\"", "\tBoard Type: \"scintillator\"",
                         "\tConnection address: \"sim://1\"", "Using  \"libcaendig2sim\"  for board  \"Left\"",
                         "Connection status:  0"}));
  ASSERT_EQ(boards_.size(), 1U);
  const DigitizerBoard& board = *boards_[0];
  EXPECT_EQ(board.name, QString("Left"));
  EXPECT_EQ(board.type, QString("scintillator"));
  EXPECT_EQ(board.family, QString("fam"));
  EXPECT_EQ(board.pluginName, QString("LIBcaenDIG2sim"));
  EXPECT_TRUE(board.IsConnected());
  EXPECT_EQ(board.Handle(), 7U);
  EXPECT_EQ(Calls(), QString("open sim://1;"));
}

TEST_F(HardwareSetupTest, ANumericIdIsTheBoardsIdButPrintsAsAnEmptyText_isKept) {
  EXPECT_FALSE(Connect(R"([{"enable": true, "id": 17, "board_plugin": "libCAENDig2Sim"},
                           {"enable": true, "id": "18", "board_plugin": "libCAENDig2Sim"}])"));
  EXPECT_EQ(boards_.at(0)->id, 17);
  EXPECT_EQ(boards_.at(1)->id, 0);
  EXPECT_EQ(log_.Count("Connecting to board:  \"\""), 1);
  EXPECT_EQ(log_.Count("Connecting to board:  \"18\""), 1);
}

TEST_F(HardwareSetupTest, EntriesThatAreNotEnabledAreSkippedSilently) {
  EXPECT_FALSE(Connect(R"([{"enable": false, "board_plugin": "none"}, {"board_plugin": "none"},
                           {"enable": "true", "board_plugin": "none"}, {"enable": 1}, {"enable": null}, 5, "x",
                           null, []])"));
  EXPECT_TRUE(boards_.empty());
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(HardwareSetupTest, NoEntriesConnectNothing) {
  EXPECT_FALSE(Connect("[]"));
  EXPECT_TRUE(boards_.empty());
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(HardwareSetupTest, ABoardWithoutALibraryEndsStartUpWithStatusZero_isKept) {
  EXPECT_EQ(Connect(R"([{"enable": true, "id": "1", "board_name": "n", "board_type": "t",
                         "board_family": "Digit", "board_plugin": "libCAENDig2Other",
                         "board_connection_string": "a"},
                        {"enable": true, "board_plugin": "libCAENDig2Sim"}])"),
            0);
  EXPECT_EQ(log_.Lines(), (QStringList{"Connecting to board:  \"1\"", "\tName: \"n\"", "\tBoard Type: \"t\"",
                                       "\tConnection address: \"a\"",
                                       "Unable to locate a board plugin library for  \"Digit\""}));
  EXPECT_TRUE(boards_.empty());
  EXPECT_EQ(Calls(), QString());
}

TEST_F(HardwareSetupTest, WrongTypesReadAsEmptyAndFindNoLibrary) {
  EXPECT_EQ(Connect(R"([{"enable": true, "id": [], "board_name": 1, "board_type": {}, "board_family": 5,
                         "board_plugin": true, "board_connection_string": null}])"),
            0);
  EXPECT_EQ(log_.Lines(),
            (QStringList{"Connecting to board:  \"\"", "\tName: \"\"", "\tBoard Type: \"\"",
                         "\tConnection address: \"\"", "Unable to locate a board plugin library for  \"\""}));
}

TEST_F(HardwareSetupTest, ABoardThatDoesNotOpenEndsStartUpWithStatusOne) {
  EXPECT_EQ(Connect(R"([{"enable": true, "id": "1", "board_name": "n", "board_type": "t",
                         "board_plugin": "libCAENDig2Sim", "board_connection_string": "-3",
                         "configs": [{"elements": [{"path": "p", "value": "v", "direct_apply": true}]}]},
                        {"enable": true, "board_plugin": "libCAENDig2Sim"}])"),
            1);
  EXPECT_EQ(log_.Lines(), (QStringList{"Connecting to board:  \"1\"", "\tName: \"n\"", "\tBoard Type: \"t\"",
                                       "\tConnection address: \"-3\"",
                                       "Using  \"libcaendig2sim\"  for board  \"n\"", "Connection status:  -3",
                                       "HARDWARE device:  \"-3\"  is reporting isssues in connection procedure",
                                       "KORVAX Server can not start without all board correctly loaded",
                                       "Check connection or disable it from configuration file"}));
  EXPECT_TRUE(boards_.empty());
  EXPECT_EQ(Calls(), QString("open -3;"));
}

TEST_F(HardwareSetupTest, APositiveStatusIsAFailureToo) {
  EXPECT_EQ(Connect(R"([{"enable": true, "board_plugin": "libCAENDig2Sim", "board_connection_string": "2"}])"), 1);
  EXPECT_EQ(log_.Count("Connection status:  2"), 1);
}

TEST_F(HardwareSetupTest, ALibraryWithoutOpenEndsStartUpWithStatusOne) {
  AddLibrary("CAENDig2NoOpen.so", "Open");
  BoardPlugins plugins;
  plugins.LoadAll(Folder());
  EXPECT_EQ(HardwareSetup::ConnectBoards(test::Array(R"([{"enable": true, "board_plugin": "CAENDig2NoOpen"}])"),
                                         plugins, boards_),
            1);
  EXPECT_EQ(log_.Count("Connection status:  -15"), 1);
}

TEST_F(HardwareSetupTest, BoardsConnectedBeforeAFailureStayListed) {
  EXPECT_EQ(Connect(R"([{"enable": true, "board_name": "good", "board_plugin": "libCAENDig2Sim"},
                        {"enable": true, "board_name": "bad", "board_plugin": "libCAENDig2Sim",
                         "board_connection_string": "1"}])"),
            1);
  ASSERT_EQ(boards_.size(), 1U);
  EXPECT_EQ(boards_[0]->name, QString("good"));
}

TEST_F(HardwareSetupTest, TheWholeEntryIsAppliedEndpointsBeforeCommandsAndNoCommandIsSent) {
  EXPECT_FALSE(Connect(R"([{"enable": true, "board_plugin": "libCAENDig2Sim",
      "commands": [{"command_type": "start", "endpoint_type": "e", "path": "go"}],
      "endpoints": [{"name": "e", "enable": true}],
      "configs": [{"elements": [{"name": "n", "path": "\\p", "value": "v", "direct_apply": true}]}]}])"));
  EXPECT_EQ(Calls(), QString("open ;set 7 \\p=v;"));
  ASSERT_EQ(boards_.size(), 1U);
  EXPECT_EQ(boards_[0]->Parameters().size(), 1U);
  ASSERT_EQ(boards_[0]->Endpoints().size(), 1U);
  EXPECT_EQ(boards_[0]->Endpoints()[0].startCommands.size(), 1U);
  ASSERT_EQ(boards_[0]->Commands().size(), 1U);
  EXPECT_TRUE(boards_[0]->Commands()[0].attached);
}

TEST_F(HardwareSetupTest, BoardsAreListedInFileOrder) {
  EXPECT_FALSE(Connect(R"([{"enable": true, "board_name": "b", "board_plugin": "libCAENDig2Sim"},
                           {"enable": false, "board_name": "x"},
                           {"enable": true, "board_name": "a", "board_plugin": "libCAENDig2Sim"}])"));
  ASSERT_EQ(boards_.size(), 2U);
  EXPECT_EQ(boards_[0]->name, QString("b"));
  EXPECT_EQ(boards_[1]->name, QString("a"));
}

}  // namespace
