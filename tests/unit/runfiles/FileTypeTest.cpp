#include "tests/unit/runfiles/Examples.h"

#include <gtest/gtest.h>

namespace korvax::runfiles {
namespace {

using namespace std::string_literals;

class TypeOfFile : public testing::Test {
protected:
  std::optional<FileType> Type(const std::string& name, const std::string& bytes) const {
    const auto recognised = Recognise(folder_.Write(name, bytes));
    const auto* type = std::get_if<FileType>(&recognised);
    return type != nullptr ? std::optional(*type) : std::nullopt;
  }

  test::TemporaryFolder folder_;
};

TEST_F(TypeOfFile, isToldByNameAndFirstBytes) {
  for (const test::Example& example : test::Examples()) {
    SCOPED_TRACE(example.name);
    EXPECT_EQ(Type(example.fileName, example.Bytes()), example.type);
  }
}

TEST_F(TypeOfFile, ofWavesHasTwoMagics_isKept) {
  EXPECT_EQ(Type("x.bin", "KVXS\0"s), (FileType{Kind::Waves, Form::Binary}));
  EXPECT_EQ(Type("x.bin", "KVXO"), (FileType{Kind::Waves, Form::Binary}));
}

TEST_F(TypeOfFile, isUnknownWhereNoRecordTellsIt) {
  EXPECT_EQ(Type("x.bin", "KVXS"), (FileType{Kind::Unknown, Form::Binary}));
  EXPECT_EQ(Type("x.csv", ""), (FileType{Kind::Unknown, Form::Csv}));
  EXPECT_EQ(Type("x.csv", "1,2,"), (FileType{Kind::Unknown, Form::Csv}));
  for (const char* text : {"", "[", "[]", "[{"}) {
    EXPECT_EQ(Type("x.json", text), (FileType{Kind::Unknown, Form::Json})) << text;
  }
}

TEST_F(TypeOfFile, isNoneForOtherNamesAndBytes) {
  EXPECT_EQ(Type("x.stat", "RUNNING_TIME_s"), std::nullopt);
  EXPECT_EQ(Type("x.dat", ""), std::nullopt);
  EXPECT_EQ(Type("x.BIN", "KVXS1700000000"), std::nullopt);
  EXPECT_EQ(Type("x.csv", "-1,2,3,\n"), std::nullopt);
  EXPECT_EQ(Type("x.json", "{}"), std::nullopt);
}

TEST(FormOfAName, isItsEnding) {
  EXPECT_EQ(FormOfName("a/b_0.bin"), Form::Binary);
  EXPECT_EQ(FormOfName("b.csv"), Form::Csv);
  EXPECT_EQ(FormOfName("b.json"), Form::Json);
  EXPECT_EQ(FormOfName("bin"), std::nullopt);
  EXPECT_EQ(FormOfName(""), std::nullopt);
}

}  // namespace
}  // namespace korvax::runfiles
