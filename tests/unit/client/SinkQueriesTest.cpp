#include "client/SinkQueries.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SinkQueries, areWrittenAsTheBlocksReadThem) {
  EXPECT_EQ(DataQuery(std::vector{0, 3}), R"({"args":[{"channels":[0,3],"cmd":"get_data"}]})");
  EXPECT_EQ(StatusQuery(), R"({"args":[{"cmd":"data_get_status"}]})");
  EXPECT_EQ(ResetQuery(), R"({"args":[{"cmd":"reset"}]})");
  EXPECT_EQ(RunQuery(true), R"({"args":[{"cmd":"run_control","status":"freerun"}]})");
  EXPECT_EQ(RunQuery(false), R"({"args":[{"cmd":"run_control","status":"idle"}]})");
}

TEST(ReadData, readsEveryChannel) {
  const auto data = ReadData(QStringLiteral(R"([{"data":[1,2,3]},{"data":[]},{"data":[0]}])"));
  ASSERT_TRUE(data.value);
  EXPECT_THAT(*data.value, ElementsAre(ElementsAre(1, 2, 3), IsEmpty(), ElementsAre(0)));
}

TEST(ReadData, doesNotMindWhiteSpace) {
  const auto data = ReadData(QStringLiteral("\n [ { \"data\" :\t[ 1 ,\r\n 2 ] } ] \n"));
  ASSERT_TRUE(data.value);
  EXPECT_THAT(*data.value, ElementsAre(ElementsAre(1, 2)));
}

TEST(ReadData, aNegativeCounterIsModulo2To32) {
  const auto data = ReadData(QStringLiteral(R"([{"data":[-1,-2147483648,2147483647,4294967295]}])"));
  ASSERT_TRUE(data.value);
  EXPECT_THAT(*data.value, ElementsAre(ElementsAre(4294967295U, 2147483648U, 2147483647U, 4294967295U)));
}

TEST(ReadData, saysWhatIsWrong) {
  const std::vector<std::pair<const char*, const char*>> table{
      {"", "it is not JSON"},
      {"nonsense", "it is not JSON"},
      {R"([{"data":[1,2)", "it is not JSON"},
      {R"([{"data":[1,]}])", "it is not JSON"},
      {R"([{"data":[1]}] x)", "it is not JSON"},
      {R"({"data":[1]})", "it is not an array"},
      {R"([[1]])", "its entry 0 has no array \"data\""},
      {R"([{"data":[1]},{}])", "its entry 1 has no array \"data\""},
      {R"([{"data":"1"}])", "its entry 0 has no array \"data\""},
      {R"([{"data":[1,"2"]}])", "its entry 0 has a bin 1 that is not a 32-bit count"},
      {R"([{"data":[1,2,1.5]}])", "its entry 0 has a bin 2 that is not a 32-bit count"},
      {R"([{"data":[4294967296]}])", "its entry 0 has a bin 0 that is not a 32-bit count"},
      {R"([{"data":[-2147483649]}])", "its entry 0 has a bin 0 that is not a 32-bit count"},
      {R"([{"data":[1e300]}])", "its entry 0 has a bin 0 that is not a 32-bit count"},
      {R"([{"data":[null]}])", "its entry 0 has a bin 0 that is not a 32-bit count"},
      {R"([{"data":[true]}])", "its entry 0 has a bin 0 that is not a 32-bit count"}};
  for (const auto& [answer, fault] : table) {
    const auto data = ReadData(QString(answer));
    EXPECT_FALSE(data.value) << answer;
    EXPECT_TRUE(data.fault.startsWith(fault)) << answer << ": " << data.fault.toStdString();
  }
}

TEST(ReadData, survivesDeepNesting) {
  EXPECT_FALSE(ReadData(QString(100000, QLatin1Char('['))).value);
}

TEST(ReadData, readsSixtyFourChannelsOf16384Bins) {
  QString channel = QStringLiteral("{\"data\":[") + QStringLiteral("2147483647,").repeated(16384);
  channel.chop(1);
  channel += QStringLiteral("]},");
  QString answer = QLatin1Char('[') + channel.repeated(64);
  answer.chop(1);
  const auto data = ReadData(answer + QLatin1Char(']'));
  ASSERT_TRUE(data.value);
  ASSERT_EQ(data.value->size(), 64U);
  EXPECT_EQ(data.value->back(), Counts(16384, 2147483647U));
}

TEST(ReadStatus, tellsFreerunFromIdle) {
  EXPECT_EQ(ReadStatus(QStringLiteral(R"([{"response": true, "status":"freerun"}])")).value, true);
  EXPECT_EQ(ReadStatus(QStringLiteral(R"([{"response": true, "status":"idle"}])")).value, false);
}

TEST(ReadStatus, refusesAnythingElse) {
  for (const char* answer :
       {"", "[]", "{}", R"([{"response": true}])", R"([{"status":"idle"}])",
        R"([{"response": true, "status":"Idle"}])", R"([{"response": false, "status":"idle"}])",
        R"([{"response": true, "status":"idle"},{}])"}) {
    EXPECT_FALSE(ReadStatus(QString(answer)).value) << answer;
  }
}

}  // namespace
}  // namespace korvax::client
