#include "runfiles/FileSummary.h"
#include "tests/unit/runfiles/Examples.h"

#include <gmock/gmock.h>

namespace korvax::runfiles {
namespace {

using namespace std::string_literals;
using FaultKind = FileFault::Kind;
using test::Example;

class Damaged : public testing::TestWithParam<Example> {
protected:
  FileSummary Summary(const std::string& bytes) const {
    return Summarise(folder_.Write(GetParam().fileName, bytes));
  }
  Form TheForm() const { return GetParam().type.form; }

  test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(File, Damaged, testing::ValuesIn(test::Examples()),
                         [](const auto& row) { return std::string(row.param.name); });

std::vector<Example> Texts() {
  std::vector<Example> texts = test::Examples();
  std::erase_if(texts, [](const Example& example) { return example.type.form == Form::Binary; });
  return texts;
}

class DamagedText : public Damaged {};

INSTANTIATE_TEST_SUITE_P(File, DamagedText, testing::ValuesIn(Texts()),
                         [](const auto& row) { return std::string(row.param.name); });

// What stands whole in the first `length` bytes of a file: its records, and where the last of them, or the head,
// ends.
struct Whole {
  std::size_t records = 0;
  std::size_t end = 0;
};

Whole WholeIn(const Example& example, std::size_t length) {
  if (length < example.head.size()) {
    return {};
  }
  Whole whole{0, example.head.size()};
  for (const std::string& record : example.records) {
    if (whole.end + record.size() > length) {
      break;
    }
    whole.end += record.size();
    ++whole.records;
  }
  return whole;
}

// A file without records, or with whole ones and without an end of its own.
bool NothingTellsThatMoreWasToCome(const Example& example, std::size_t length) {
  switch (example.type.form) {
    case Form::Binary:
      if (example.type.kind == Kind::List && length >= 5 &&
          length < 14) {  // within the digits of the creation time
        return true;
      }
      break;
    case Form::Csv:
      if (length == 0) {
        return true;
      }
      break;
    case Form::Json:
      return false;
  }
  return length >= example.head.size() && length == WholeIn(example, length).end;
}

TEST_P(Damaged, tellsHowManyBytesAreWholeWhereverItEnds) {
  const std::string bytes = GetParam().Bytes();
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    const bool withinHead = length < GetParam().head.size();
    const std::optional<std::uint64_t> whole = Summary(bytes.substr(0, length)).wholeBytes;
    if (!withinHead) {
      EXPECT_EQ(whole, WholeIn(GetParam(), length).end) << length;
    } else if (NothingTellsThatMoreWasToCome(GetParam(), length)) {
      EXPECT_EQ(whole, length);
    } else {
      EXPECT_EQ(whole, std::nullopt) << length;
    }
  }
}

TEST_P(Damaged, isGoodWhenItIsWhole) {
  const FileSummary summary = Summary(GetParam().Bytes());
  EXPECT_FALSE(summary.fault);
  EXPECT_EQ(summary.type, GetParam().type);
  EXPECT_EQ(summary.records, 2U);
}

TEST_P(Damaged, isReadUpToItsLastWholeRecordWhereverItIsCutOff) {
  const std::string bytes = GetParam().Bytes();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    SCOPED_TRACE(length);
    const FileSummary summary = Summary(bytes.substr(0, length));
    const Whole whole = WholeIn(GetParam(), length);
    EXPECT_EQ(summary.records, whole.records);
    if (NothingTellsThatMoreWasToCome(GetParam(), length)) {
      EXPECT_FALSE(summary.fault) << summary.fault->Text();
      continue;
    }
    ASSERT_TRUE(summary.fault);
    EXPECT_EQ(summary.fault->kind, TheForm() == Form::Json ? FaultKind::NotClosed : FaultKind::CutOff);
    EXPECT_EQ(summary.fault->offset, whole.end);
    EXPECT_EQ(summary.fault->size, length);
    EXPECT_EQ(summary.fault->wholeRecords, whole.records);
  }
}

TEST_P(DamagedText, tellsOfAForeignByteWhereverItStands) {
  const std::string good = GetParam().Bytes();
  for (std::size_t place = 0; place < good.size(); ++place) {
    SCOPED_TRACE(place);
    std::string bytes = good;
    bytes[place] = '#';
    const FileSummary summary = Summary(bytes);
    ASSERT_TRUE(summary.fault);
    EXPECT_EQ(summary.fault->kind, place == 0 ? FaultKind::NoRunFile : FaultKind::Malformed);
    EXPECT_LE(summary.fault->offset, place);
    EXPECT_EQ(summary.fault->wholeRecords, summary.records);
    EXPECT_EQ(summary.records, WholeIn(GetParam(), place).records);
  }
}

TEST_P(Damaged, neverBreaksTheReader) {
  const std::string good = GetParam().Bytes();
  const std::size_t start = GetParam().head.size() > 16 ? GetParam().head.size() - 16 : 0;
  for (std::size_t place = start; place < good.size(); ++place) {
    for (const char byte : "\0\1\x7f\x80\xff\x30\x39,]}[\n-e"s) {
      std::string bytes = good;
      bytes[place] = byte;
      const FileSummary summary = Summary(bytes);
      EXPECT_LE(summary.records, good.size());
      EXPECT_TRUE(!summary.fault || summary.fault->wholeRecords == summary.records);
    }
  }
}

TEST_P(Damaged, tellsOfBytesBehindItsEnd) {
  const std::string good = GetParam().Bytes();
  const FileSummary summary = Summary(good + "x");
  ASSERT_TRUE(summary.fault);
  EXPECT_EQ(summary.fault->offset, good.size());
  EXPECT_EQ(summary.records, 2U);
  EXPECT_EQ(summary.fault->kind, TheForm() == Form::Binary ? FaultKind::CutOff : FaultKind::Malformed);
}

}  // namespace
}  // namespace korvax::runfiles
