#include "boards/DigitizerBoard.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gmock/gmock.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A library that writes down every lookup and every argument of every call.
std::vector<std::string> lookups;
std::vector<std::string> calls;
std::int32_t result = 0;
std::string answer;

template <typename... Arguments>
std::int32_t Record(const char* function, const Arguments&... arguments) {
  std::ostringstream call;
  call << function;
  ((call << '|' << arguments), ...);
  calls.push_back(call.str());
  return result;
}

std::int32_t Open(const char* connection, std::uint64_t* handle) {
  *handle = 0xFEDCBA9876543210U;
  return Record("Open", connection);
}
std::int32_t Set(std::uint64_t handle, const char* path, const char* value) {
  return Record("Set", handle, path, value);
}
std::int32_t Get(std::uint64_t handle, const char* path, char* value) {
  std::memcpy(value, answer.c_str(), answer.size() + 1);
  return Record("Get", handle, path);
}
std::int32_t Send(std::uint64_t handle, const char* command) {
  return Record("Send", handle, command);
}
std::int32_t Read(std::uint64_t handle, const char* endpoint, std::int32_t timeoutMs, void* block) {
  return Record("Read", handle, endpoint, timeoutMs, block);
}
std::int32_t Free(std::uint64_t handle, const char* endpoint, void* block) {
  return Record("Free", handle, endpoint, block);
}

QFunctionPointer FindFunction(const std::string& name) {
  const std::pair<const char*, QFunctionPointer> functions[] = {
      {"CAENDig2_Open", reinterpret_cast<QFunctionPointer>(Open)},
      {"CAENDig2_SetValueByQuery", reinterpret_cast<QFunctionPointer>(Set)},
      {"CAENDig2_GetValueByQuery", reinterpret_cast<QFunctionPointer>(Get)},
      {"CAENDig2_SendCommandByQuery", reinterpret_cast<QFunctionPointer>(Send)},
      {"CAENDig2_ReadDataByQuery", reinterpret_cast<QFunctionPointer>(Read)},
      {"CAENDig2_FreePointerByQuery", reinterpret_cast<QFunctionPointer>(Free)},
  };
  for (const auto& [known, function] : functions) {
    if (name == known) {
      return function;
    }
  }
  return nullptr;
}

class DigitizerBoardTest : public testing::Test {
protected:
  DigitizerBoardTest() {
    lookups.clear();
    calls.clear();
    result = 0;
    answer.clear();
  }

  // Everything but `missing_` is found.
  QFunctionPointer Lookup(const std::string& name) {
    lookups.push_back(name);
    return name == missing_ ? nullptr : FindFunction(name);
  }

  std::string missing_;
  test::LogCapture log_;
  DigitizerBoard board_{[this](const char* name) { return Lookup(name); }};
};

constexpr const char* HandleText = "18364758544493064720";  // 0xFEDCBA9876543210

TEST_F(DigitizerBoardTest, StartsUnconnectedWithHandleZeroAndEmptyLists) {
  EXPECT_FALSE(board_.IsConnected());
  EXPECT_EQ(board_.Handle(), 0U);
  EXPECT_EQ(board_.id, 0);
  EXPECT_TRUE(board_.Parameters().empty());
  EXPECT_TRUE(board_.Endpoints().empty());
  EXPECT_TRUE(board_.Commands().empty());
  EXPECT_THAT(lookups, IsEmpty());
}

TEST_F(DigitizerBoardTest, OpenHandsOverTheAddressAndKeepsTheHandle) {
  EXPECT_EQ(board_.Open("dig2://10.0.0.1"), 0);
  EXPECT_THAT(calls, ElementsAre("Open|dig2://10.0.0.1"));
  EXPECT_TRUE(board_.IsConnected());
  EXPECT_EQ(board_.Handle(), 0xFEDCBA9876543210U);
}

TEST_F(DigitizerBoardTest, SecondOpenGivesMinusFourWithoutTouchingTheLibrary) {
  ASSERT_EQ(board_.Open("a"), 0);
  lookups.clear();
  EXPECT_EQ(board_.Open("b"), -4);
  EXPECT_THAT(calls, ElementsAre("Open|a"));
  EXPECT_THAT(lookups, IsEmpty());
  EXPECT_TRUE(board_.IsConnected());
}

TEST_F(DigitizerBoardTest, FailedOpenPassesTheCodeOnKeepsTheHandleAndMayBeTriedAgain) {
  result = -7;
  EXPECT_EQ(board_.Open("a"), -7);
  EXPECT_FALSE(board_.IsConnected());
  EXPECT_EQ(board_.Handle(), 0xFEDCBA9876543210U);
  result = 0;
  EXPECT_EQ(board_.Open("b"), 0);
  EXPECT_TRUE(board_.IsConnected());
  EXPECT_THAT(calls, ElementsAre("Open|a", "Open|b"));
}

TEST_F(DigitizerBoardTest, APositiveOpenResultIsAFailureToo) {
  result = 1;
  EXPECT_EQ(board_.Open("a"), 1);
  EXPECT_FALSE(board_.IsConnected());
}

TEST_F(DigitizerBoardTest, EveryCallHandsOverTheHandleAndItsArgumentsInOrder) {
  ASSERT_EQ(board_.Open("a"), 0);
  calls.clear();
  QString value;
  int block = 0;
  std::ostringstream address;
  address << static_cast<void*>(&block);
  board_.SetValue("\\path", "12");
  board_.GetValue("\\monitor", value);
  board_.SendCommand("\\cmd\\go");
  board_.ReadData("endpoints\\energy", &block);
  board_.FreePointer("endpoints\\energy", &block);
  const std::string handle = HandleText;
  EXPECT_THAT(calls, ElementsAre("Set|" + handle + "|\\path|12", "Get|" + handle + "|\\monitor",
                                 "Send|" + handle + "|\\cmd\\go",
                                 "Read|" + handle + "|endpoints\\energy|1000|" + address.str(),
                                 "Free|" + handle + "|endpoints\\energy|" + address.str()));
}

// The six operations, each by the name of its function.
struct Operation {
  const char* function;
  std::function<qint32(DigitizerBoard&)> run;
};

const std::vector<Operation>& Operations() {
  static int block = 0;
  static const std::vector<Operation> operations = {
      {"CAENDig2_Open", [](DigitizerBoard& board) { return board.Open("a"); }},
      {"CAENDig2_SetValueByQuery", [](DigitizerBoard& board) { return board.SetValue("p", "v"); }},
      {"CAENDig2_GetValueByQuery",
       [](DigitizerBoard& board) {
         QString value;
         return board.GetValue("p", value);
       }},
      {"CAENDig2_SendCommandByQuery", [](DigitizerBoard& board) { return board.SendCommand("p"); }},
      {"CAENDig2_ReadDataByQuery", [](DigitizerBoard& board) { return board.ReadData("e", &block); }},
      {"CAENDig2_FreePointerByQuery", [](DigitizerBoard& board) { return board.FreePointer("e", &block); }},
  };
  return operations;
}

TEST_F(DigitizerBoardTest, AMissingFunctionGivesMinusFifteenAndCallsNothing) {
  for (const Operation& operation : Operations()) {
    SCOPED_TRACE(operation.function);
    missing_ = operation.function;
    EXPECT_EQ(operation.run(board_), -15);
  }
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_FALSE(board_.IsConnected());
  EXPECT_EQ(board_.Handle(), 0U);
}

TEST_F(DigitizerBoardTest, GetValueLeavesItsTextAsItWasWhenTheFunctionIsMissing) {
  missing_ = "CAENDig2_GetValueByQuery";
  QString value = "as it was";
  EXPECT_EQ(board_.GetValue("p", value), -15);
  EXPECT_EQ(value, QString("as it was"));
}

TEST_F(DigitizerBoardTest, AFunctionIsLookedUpByItsExactNameAtEveryCall) {
  for (const Operation& operation : Operations()) {
    SCOPED_TRACE(operation.function);
    lookups.clear();
    result = -1;  // so that Open doesn't connect and can be repeated
    missing_ = operation.function;
    EXPECT_EQ(operation.run(board_), -15);
    missing_.clear();
    EXPECT_EQ(operation.run(board_), -1);
    EXPECT_EQ(operation.run(board_), -1);
    EXPECT_THAT(lookups, ElementsAre(operation.function, operation.function, operation.function));
  }
}

TEST_F(DigitizerBoardTest, TheLibrarysCodesAreReturnedUnchangedAndNotLogged) {
  for (const std::int32_t code : {-1, -4, -15, 3, 256, -2147483647 - 1, 2147483647}) {
    result = code;
    for (const Operation& operation : Operations()) {
      SCOPED_TRACE(operation.function);
      EXPECT_EQ(operation.run(board_), code);
    }
  }
  for (const QString& line : log_.Lines()) {
    EXPECT_EQ(line, QString("Set \"p\"   \"v\""));
  }
}

TEST_F(DigitizerBoardTest, CallsBeforeOpenAreMadeWithHandleZero) {
  board_.SendCommand("\\cmd\\go");
  EXPECT_THAT(calls, ElementsAre("Send|0|\\cmd\\go"));
}

TEST_F(DigitizerBoardTest, SetValueLogsWhatItSets) {
  board_.SetValue("\\par\\Thr", "100");
  EXPECT_EQ(log_.Lines(), QStringList{"Set \"\\\\par\\\\Thr\"   \"100\""});
}

TEST_F(DigitizerBoardTest, SetValueLogsItsLineEvenWhenTheFunctionIsMissing) {
  missing_ = "CAENDig2_SetValueByQuery";
  EXPECT_EQ(board_.SetValue("p", "v"), -15);
  EXPECT_EQ(log_.Lines(), QStringList{"Set \"p\"   \"v\""});
}

TEST_F(DigitizerBoardTest, GetValueTakesTheAnswerUpToItsEndAlsoWithAnErrorCode) {
  QString value = "before";
  answer = "36.6";
  EXPECT_EQ(board_.GetValue("p", value), 0);
  EXPECT_EQ(value, QString("36.6"));
  answer = "error text";
  result = -3;
  EXPECT_EQ(board_.GetValue("p", value), -3);
  EXPECT_EQ(value, QString("error text"));
}

TEST_F(DigitizerBoardTest, GetValueReadsLatin1AndUpTo63Characters) {
  QString value;
  answer =
      "\xB5"
      "A";
  board_.GetValue("p", value);
  EXPECT_EQ(value, QString(QChar(0xB5)) + "A");
  answer = std::string(63, 'z');
  board_.GetValue("p", value);
  EXPECT_EQ(value, QString(63, 'z'));
  answer.clear();
  board_.GetValue("p", value);
  EXPECT_EQ(value, QString());
}

TEST_F(DigitizerBoardTest, TextsReachTheLibraryAsLatin1) {
  const QString text = QString(QChar(0xE9)) + QChar(0xB5);
  board_.Open(text);
  board_.SetValue(text, text);
  board_.SendCommand(text);
  const std::string handle = HandleText;
  EXPECT_THAT(
      calls, ElementsAre("Open|\xE9\xB5", "Set|" + handle + "|\xE9\xB5|\xE9\xB5", "Send|" + handle + "|\xE9\xB5"));
}

}  // namespace
