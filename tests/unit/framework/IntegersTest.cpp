#include "framework/BlockParameters.h"
#include "tests/support/Json.h"

#include <gtest/gtest.h>

namespace {

using List = std::vector<qint32>;

// The value of a key of a JSON object.
QJsonValue Value(const QByteArray& json) {
  return test::Object(R"({"list":)" + json + "}")["list"];
}

TEST(Integers, areTheElementsOfAnArrayInOrder) {
  EXPECT_EQ(korvax::Integers(Value("[3,0,-1,3,2147483647,-2147483648]")),
            (List{3, 0, -1, 3, 2'147'483'647, -2'147'483'647 - 1}));
  EXPECT_EQ(korvax::Integers(Value("[7.0]")), List{7});
  EXPECT_EQ(korvax::Integers(Value("[]")), List{});
}

TEST(Integers, areZeroForEachElementThatIsNone) {
  EXPECT_EQ(korvax::Integers(Value(R"([1,"2",null,true,[3],{},2.5,2147483648,-1e300,4])")),
            (List{1, 0, 0, 0, 0, 0, 0, 0, 0, 4}));
}

TEST(Integers, areNoneOfAnythingButAnArray) {
  for (const char* json : {"3", "\"[1]\"", "null", "true", R"({"0":1})"}) {
    EXPECT_EQ(korvax::Integers(Value(json)), List{}) << json;
  }
  EXPECT_EQ(korvax::Integers(QJsonValue()), List{});
  EXPECT_EQ(korvax::Integers(QJsonValue(QJsonValue::Undefined)), List{});
}

TEST(Integers, areAsManyAsThereAreElements) {
  EXPECT_EQ(korvax::Integers(Value("[1" + QByteArray(",1").repeated(199'999) + "]")), List(200'000, 1));
}

}  // namespace
