#include "tests/unit/control/FileWatcherFixture.h"

#include <QMetaMethod>

namespace {

// The watcher's slot, called directly: what one change does to the boards.
class FileWatcherSlot : public FileWatcherFixture {
protected:
  void Change(const std::string& text) {
    Rewrite(text);
    watcher.fileChanged(Path());
  }

  FileWatcher watcher{boards};
};

TEST_F(FileWatcherSlot, LogsAppliesAndConfiguresTheBoardOfAnEntry) {
  Change(Hardware(Entry("right", "7")));
  EXPECT_EQ(vendor.Calls(), (QStringList{"set /right=7", "command right_config"}));
  const QString nul(1, QChar(0));
  EXPECT_EQ(log.Lines(), (QStringList{" ---- RECONFIG BOARD:  \"right\"  ----", "Set \"/right\"   \"7\"",
                                      "Apply  \"p\" :  \"7\"  RES:  " + nul}));
}

TEST_F(FileWatcherSlot, AppliesTheEntriesInFileOrder) {
  Change(Hardware(Entry("right", "1") + "," + Entry("left", "2")));
  EXPECT_EQ(vendor.Calls(),
            (QStringList{"set /right=1", "command right_config", "set /left=2", "command left_config"}));
}

TEST_F(FileWatcherSlot, AppliesBothOfTwoEntriesOfOneNameInFileOrder) {
  Change(Hardware(Entry("left", "1") + "," + Entry("right", "5") + "," + Entry("left", "2")));
  EXPECT_EQ(vendor.CallsOf("set"), (QStringList{"set /left=1", "set /right=5", "set /left=2"}));
  EXPECT_EQ(ReconfigLines("left"), 2);
  EXPECT_EQ(boards[0]->Parameters().size(), 1U) << "the second entry's tree replaces the first's";
}

TEST_F(FileWatcherSlot, AppliesAnEntryToEveryBoardOfItsName) {
  AddBoard("left");
  FileWatcher other(boards);
  Rewrite(Hardware(Entry("left", "1")));
  other.fileChanged(Path());
  EXPECT_EQ(vendor.CallsOf("set"), (QStringList{"set /left=1", "set /left=1"}));
}

TEST_F(FileWatcherSlot, AppliesTheSameContentAgain_isKept) {
  Change(Hardware(Entry("left", "1")));
  watcher.fileChanged(Path());
  watcher.fileChanged(Path());
  EXPECT_EQ(TimesApplied("left", "1"), 3);
  EXPECT_EQ(ReconfigLines("left"), 3);
}

TEST_F(FileWatcherSlot, AppliesAnEntryThatIsNotEnabled_isKept) {
  Change(Hardware(R"({"enable":false,"board_name":"left"})"));
  EXPECT_EQ(vendor.Calls(), QStringList{"command left_config"});
}

TEST_F(FileWatcherSlot, IgnoresUnknownNamesAndLeavesOtherBoardsAlone) {
  Change(
      Hardware(Entry("Left", "1") + "," + Entry("left ", "1") + "," + Entry("", "1") + "," + Entry("none", "1")));
  EXPECT_EQ(vendor.Calls(), QStringList());
  EXPECT_EQ(log.Lines(), QStringList());
  Change(Hardware(Entry("none", "1") + "," + Entry("left", "2")));
  EXPECT_EQ(vendor.Calls(), (QStringList{"set /left=2", "command left_config"}));
}

TEST_F(FileWatcherSlot, GivesAnEntryWithoutAStringAsNameToABoardWithoutAName) {
  AddBoard("");
  FileWatcher other(boards);
  Rewrite(Hardware(R"({"board_name":5},{},5,null,"left")"));
  other.fileChanged(Path());
  EXPECT_EQ(ReconfigLines(""), 5) << "they all read as an empty name";
  EXPECT_EQ(ReconfigLines("left"), 0);
}

TEST_F(FileWatcherSlot, AppliesAndLogsNothingOfAFileWithoutHardware) {
  const std::string entry = Entry("left", "1");
  const std::string whole = Hardware(entry);
  for (const std::string& text :
       {std::string("{}"), std::string(R"({"hardware":[)" + entry + "]}"),
        std::string(R"({"Hardware":)" + entry + "}"), std::string(R"({"Hardware":"left"})"),
        std::string(R"({"Hardware":null})"), std::string("[" + entry + "]"), std::string(""), std::string("left"),
        std::string("\0\0\0", 3), whole + "}", whole + whole}) {
    Change(text);
    EXPECT_EQ(vendor.Calls(), QStringList()) << text;
  }
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(FileWatcherSlot, AppliesAndLogsNothingOfAHalfWrittenFile) {
  const std::string whole = Hardware(Entry("left", "1") + "," + Entry("right", "2"));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    Change(whole.substr(0, length));
    ASSERT_EQ(vendor.Calls(), QStringList()) << length;
  }
  EXPECT_EQ(log.Lines(), QStringList());
  Change(whole);
  EXPECT_EQ(vendor.CallsOf("set"), (QStringList{"set /left=1", "set /right=2"}));
}

TEST_F(FileWatcherSlot, AppliesAndLogsNothingOfAFileThatCannotBeRead) {
  for (const QString& path : {Path(), Path() + "/x", QString::fromStdString(folder.Path())}) {
    watcher.fileChanged(path);
  }
  EXPECT_EQ(vendor.Calls(), QStringList());
  EXPECT_EQ(log.Lines(), QStringList());
}

TEST_F(FileWatcherSlot, GoesOnWhenABoardRefuses) {
  vendor.result = -1;
  Change(Hardware(Entry("left", "1") + "," + Entry("right", "2")));
  EXPECT_EQ(vendor.CallsOf("set"), (QStringList{"set /left=1", "set /right=2"}));
  vendor.missing = {"CAENDig2_SetValueByQuery", "CAENDig2_SendCommandByQuery"};
  Change(Hardware(Entry("left", "3")));
  EXPECT_EQ(ReconfigLines("left"), 2);
}

TEST_F(FileWatcherSlot, ConfiguresTheEndpointsButNeverResetsThem) {
  const QJsonObject entry = test::Object(R"({
      "endpoints": [{"name": "one", "enable": true}],
      "commands": [{"path": "start1", "command_type": "start", "endpoint_type": "one"},
                   {"path": "stop1", "command_type": "stop", "endpoint_type": "one"},
                   {"path": "config1", "command_type": "config", "endpoint_type": "one"},
                   {"path": "reset1", "command_type": "reset", "endpoint_type": "one"}]})");
  boards[0]->LoadEndpoints(entry);
  boards[0]->LoadCommands(entry);
  Change(Hardware(R"({"board_name":"left","endpoints":[],"commands":[]})"));
  EXPECT_EQ(vendor.Calls(),
            (QStringList{"command left_config", "command stop1", "command config1", "command start1"}));
  EXPECT_EQ(boards[0]->Endpoints().size(), 1U) << "endpoints are those of the start";
}

TEST_F(FileWatcherSlot, IsASlotOfAFileSystemWatcher) {
  Rewrite(Hardware(Entry("left", "1")));
  QFileSystemWatcher& base = watcher;
  const int slot = base.metaObject()->indexOfSlot("fileChanged(QString)");
  ASSERT_GE(slot, 0);
  ASSERT_TRUE(base.metaObject()->method(slot).invoke(&base, Qt::DirectConnection, Q_ARG(QString, Path())));
  EXPECT_EQ(TimesApplied("left", "1"), 1);
}

}  // namespace
