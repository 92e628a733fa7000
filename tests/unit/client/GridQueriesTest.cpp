#include "client/GridQueries.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;

TEST(GridQuery, namesTheSource) {
  EXPECT_EQ(GridQuery(MapSource::Position), R"({"args":[{"cmd":"get_data","source":"heatmap"}]})");
  EXPECT_EQ(GridQuery(MapSource::CumulativeImage), R"({"args":[{"cmd":"get_data","source":"cumulative"}]})");
  EXPECT_EQ(GridQuery(MapSource::ImmediateImage), R"({"args":[{"cmd":"get_data","source":"immediate"}]})");
}

TEST(ReadGrid, readsRowAfterRow) {
  const auto grid = ReadGrid(QStringLiteral(R"({"data":[[1,2,3],[4,5,6]]})"));
  ASSERT_TRUE(grid.value);
  EXPECT_EQ(grid.value->rows, 2U);
  EXPECT_EQ(grid.value->columns, 3U);
  EXPECT_THAT(grid.value->counts, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(ReadGrid, aNegativeCounterIsModulo2To32) {
  const auto grid = ReadGrid(QStringLiteral(R"({"data":[[-1,-2147483648],[2147483647,4294967295]]})"));
  ASSERT_TRUE(grid.value);
  EXPECT_THAT(grid.value->counts, ElementsAre(4294967295U, 2147483648U, 2147483647U, 4294967295U));
}

TEST(ReadGrid, readsASingleCell) {
  EXPECT_EQ(ReadGrid(QStringLiteral(R"({"data":[[7]]})")).value, (CountGrid{1, 1, {7}}));
}

TEST(ReadGrid, readsMapsWithoutRowsOrColumnsAsTheirBlocksWriteThem) {
  const std::vector<std::pair<const char*, CountGrid>> table{
      {R"({"data":[]})", {0, 0, {}}},      {R"({"data":[[]]})", {1, 0, {}}}, {R"({"data":[[],[]]})", {2, 0, {}}},
      {R"({"data":[})", {0, 0, {}}},       {R"({"data":[[]})", {1, 0, {}}},  {R"({"data":[[,[]})", {2, 0, {}}},
      {R"({"data":[[,[,[]})", {3, 0, {}}}, {" {\"data\":[}\n", {0, 0, {}}}};
  for (const auto& [answer, expected] : table) {
    EXPECT_EQ(ReadGrid(QString(answer)).value, expected) << answer;
  }
}

TEST(ReadGrid, readsAMapOfManyRowsWithoutColumns) {
  const QString answer = QStringLiteral("{\"data\":[") + QStringLiteral("[,").repeated(1000000) + "[]}";
  EXPECT_EQ(ReadGrid(answer).value, (CountGrid{1000001, 0, {}}));
}

TEST(ReadGrid, saysWhatIsWrong) {
  const std::vector<std::pair<const char*, const char*>> table{
      {"", "it is not JSON"},
      {"nonsense", "it is not JSON"},
      {R"({"data":[[1,2)", "it is not JSON"},
      {R"({"data":[[1,2],})", "it is not JSON"},
      {R"({"data":[[,1]})", "it is not JSON"},
      {R"({"data":[[,})", "it is not JSON"},
      {R"({"data":[[]})"
       "x",
       "it is not JSON"},
      {R"([{"data":[[1]]}])", "it is not one object with an array \"data\""},
      {R"({"data":{"x":[1]}})", "it is not one object with an array \"data\""},
      {R"({"status": "nodata"})", "it is not one object with an array \"data\""},
      {R"({"data":[1,2]})", "its row 0 is not an array"},
      {R"({"data":[[1],{"x":[1]}]})", "its row 1 is not an array"},
      {R"({"data":[[1,2],[3]]})", "its row 1 has 1 columns, row 0 has 2"},
      {R"({"data":[[],[3]]})", "its row 1 has 1 columns, row 0 has 0"},
      {R"({"data":[[1,2],[3,4],[]]})", "its row 2 has 0 columns, row 0 has 2"},
      {R"({"data":[[1,2],[3,"4"]]})", "its row 1 has a bin 1 that is not a 32-bit count"},
      {R"({"data":[[1.5]]})", "its row 0 has a bin 0 that is not a 32-bit count"},
      {R"({"data":[[4294967296]]})", "its row 0 has a bin 0 that is not a 32-bit count"}};
  for (const auto& [answer, fault] : table) {
    const auto grid = ReadGrid(QString(answer));
    EXPECT_FALSE(grid.value) << answer;
    EXPECT_TRUE(grid.fault.startsWith(fault)) << answer << ": " << grid.fault.toStdString();
  }
}

TEST(ReadGrid, survivesDeepNesting) {
  EXPECT_FALSE(ReadGrid(QStringLiteral("{\"data\":") + QString(100000, QLatin1Char('['))).value);
}

}  // namespace
}  // namespace korvax::client
