#include "boards/DigitizerBoard.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QtDebug>

namespace {

std::string AllLatin1(int from, int to) {
  std::string text;
  for (int code = from; code <= to; ++code) {
    text += static_cast<char>(code);
  }
  return text;
}

TEST(BoardTexts, AnAnswerIsCutAt63CharactersHoweverMuchTheLibraryWrites) {
  test::FakeVendor vendor;
  const DigitizerBoard board(vendor.Lookup());
  const QString kept = QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz+");
  ASSERT_EQ(kept.size(), 63);
  for (const std::size_t length : {63U, 64U, 65U, 100U, 127U, 128U, 254U, 255U}) {
    QString value = "before";
    vendor.value = kept.toStdString() + std::string(length - 63, '*');
    EXPECT_EQ(board.GetValue("p", value), 0);
    EXPECT_EQ(value, kept) << length;
  }
}

TEST(BoardTexts, ALongAnswerIsCutWithAnErrorCodeTooAndLeavesNothingToTheNext) {
  test::FakeVendor vendor;
  const DigitizerBoard board(vendor.Lookup());
  vendor.value = std::string(255, '\xE9');
  vendor.result = -3;
  QString value;
  EXPECT_EQ(board.GetValue("p", value), -3);
  EXPECT_EQ(value, QString(63, QChar(0xE9)));
  vendor.value = "on";
  EXPECT_EQ(board.GetValue("p", value), -3);
  EXPECT_EQ(value, "on");
}

TEST(BoardTexts, EveryCharacterOfAnAnswerIsReadAsLatin1) {
  test::FakeVendor vendor;
  const DigitizerBoard board(vendor.Lookup());
  for (const auto& [from, to] :
       {std::pair(1, 63), std::pair(64, 126), std::pair(127, 189), std::pair(190, 252), std::pair(253, 255)}) {
    vendor.value = AllLatin1(from, to);
    QString value;
    board.GetValue("p", value);
    ASSERT_EQ(value.size(), to - from + 1);
    for (int i = 0; i < value.size(); ++i) {
      EXPECT_EQ(value[i].unicode(), from + i);
    }
  }
  // What would be one character in UTF-8 is two.
  vendor.value = "\xC2\xB5";
  QString value;
  board.GetValue("p", value);
  EXPECT_EQ(value, QString(QChar(0xC2)) + QChar(0xB5));
}

// The library's call stands in the same list as the log lines.
std::int32_t LoggedSet(std::uint64_t /*handle*/, const char* path, const char* value) {
  qInfo().noquote() << "called with" << path << value;
  return 0;
}

TEST(BoardTexts, WhatIsSetIsLoggedBeforeTheLibraryIsCalled) {
  const test::LogCapture log;
  const DigitizerBoard board([](const char*) { return reinterpret_cast<QFunctionPointer>(LoggedSet); });
  EXPECT_EQ(board.SetValue("first", "1"), 0);
  EXPECT_EQ(board.SetValue("second", "2"), 0);
  EXPECT_EQ(log.Lines(), (QStringList{R"(Set "first"   "1")", "called with first 1", R"(Set "second"   "2")",
                                      "called with second 2"}));
}

}  // namespace
