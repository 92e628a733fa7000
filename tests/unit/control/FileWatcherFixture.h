#pragma once

#include "boards/DigitizerBoard.h"
#include "control/FileWatcher.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <filesystem>

/// Two boards "left" and "right" and a real file that a watcher may follow. What a board is told is in
/// vendor.Calls(): each has one command "NAME_config".
class FileWatcherFixture : public testing::Test {
protected:
  FileWatcherFixture() {
    AddBoard("left");
    AddBoard("right");
  }

  void AddBoard(const QString& name) {
    auto board = std::make_unique<DigitizerBoard>(vendor.Lookup());
    board->name = name;
    board->LoadCommands(QJsonObject{
        {"commands", QJsonArray{QJsonObject{{"path", name + "_config"}, {"command_type", "config_all"}}}}});
    boards.push_back(std::move(board));
  }

  /// An entry that sets the parameter "/BOARD" to a value.
  static std::string Entry(const std::string& board, const std::string& value) {
    return R"({"board_name":")" + board + R"(","configs":[{"elements":[{"name":"p","path":"/)" + board +
           R"(","value_type":"string","direct_apply":true,"value":")" + value + R"("}]}]})";
  }
  static std::string Hardware(const std::string& entries) { return R"({"Hardware":[)" + entries + "]}"; }

  /// Writes over the watched file in place.
  void Rewrite(const std::string& text) const { folder.Write("c.json", text); }
  /// Puts a new file into its place, as many editors do.
  void Replace(const std::string& text) const {
    std::filesystem::rename(folder.Write("c.json.new", text), FilePath());
  }
  std::string FilePath() const { return folder.Path() + "/c.json"; }
  QString Path() const { return QString::fromStdString(FilePath()); }

  static QString Applied(const QString& board, const QString& value) { return "set /" + board + "=" + value; }
  int TimesApplied(const QString& board, const QString& value) const {
    return vendor.Calls().count(Applied(board, value));
  }
  bool IsApplied(const QString& board, const QString& value) const {
    return test::WaitFor([&] { return TimesApplied(board, value) > 0; });
  }
  int ReconfigLines(const QString& board) const {
    return log.Count(" ---- RECONFIG BOARD:  \"" + board + "\"  ----");
  }

  test::FakeVendor vendor;
  test::LogCapture log;
  test::TemporaryFolder folder;
  BoardList boards;
};
