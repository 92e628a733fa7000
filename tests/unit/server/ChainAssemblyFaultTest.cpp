#include "server/ChainAssembly.h"

#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

struct FaultRow {
  const char* what;
  const char* block;
  QStringList words;  ///< the key, what was expected and what was found
};

const FaultRow Rows[] = {
    {"an unknown type",
     R"({"block_type": "Spectrum", "name": "s"})",
     {"\"block_type\"", "expected one of ", "source, ", "spectrum", "\"Spectrum\""}},
    {"no type", R"({"name": "s"})", {"\"block_type\"", "expected one of ", "found \"\""}},
    {"a type of several lines",
     "{\"block_type\": \"x\\nKORVAX IS STARTED AND READY\\n\", \"name\": \"s\"}",
     {"\"block_type\"", "expected one of ", R"(found "x\nKORVAX IS STARTED AND READY\n")"}},
    {"a type that is no text", R"({"name": "s", "block_type": 5})", {"\"block_type\"", "expected one of "}},
    {"an unknown upstream block",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": [{"source": "nobody", "pin": "0"}]})",
     {"\"sources\"[0].\"source\"", "expected the name of a block that stands earlier", "\"nobody\""}},
    {"an upstream name in other case",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": [{"source": "A", "pin": "0"}]})",
     {"\"sources\"[0].\"source\"", "expected", "\"A\""}},
    {"a block that reads itself",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": [{"source": "s", "pin": "0"}]})",
     {"\"sources\"[0].\"source\"", "earlier", "\"s\""}},
    {"a source entry that is no object",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": [5]})",
     {"\"sources\"[0].\"source\"", "expected", "\"\""}},
    {"a pin beyond the upstream's outputs",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": [{"source": "a", "pin": "1"}]})",
     {"\"sources\"[0].\"pin\"", "expected the index", "1 output pins of \"a\"", "found 1"}},
    {"a negative pin",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": [{"source": "a", "pin": "-1"}]})",
     {"\"sources\"[0].\"pin\"", "expected the index", "found -1"}},
    {"more inputs than sources",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1, "sources": []})",
     {"\"input_count\"", "expected at most 0", "found 1"}},
    {"inputs without sources",
     R"({"block_type": "spectrum", "name": "s", "input_count": 1})",
     {"\"input_count\"", "expected at most 0", "found 1"}},
    {"more inputs than pins",
     R"({"block_type": "spectrum", "name": "s", "input_count": 2,
         "sources": [{"source": "a", "pin": "0"}, {"source": "a", "pin": "0"}]})",
     {"\"input_count\"", "expected at most 1", "found 2"}},
    {"absurdly many inputs",
     R"({"block_type": "spectrum", "name": "s", "input_count": 2147483647, "sources": [{"source": "a"}]})",
     {"\"input_count\"", "expected at most 1", "found 2147483647"}},
    {"a block that cannot work as configured",
     R"({"block_type": "spectrum", "name": "s", "parameters": [
         {"param_name": "bin_number", "param_value": 2147483647},
         {"param_name": "ch_number", "param_value": 2147483647}]})",
     {"\"bin_number\"", "\"ch_number\"", "expected at most"}},
};

class ChainAssemblyFault : public testing::TestWithParam<FaultRow> {
protected:
  ~ChainAssemblyFault() override {
    while (!blocks_.empty()) {
      blocks_.pop_back();
    }
  }

  BoardList boards_;
  BlockList blocks_;
};

TEST_P(ChainAssemblyFault, IsToldInOneLineThatNamesChainBlockKeyAndExpectation) {
  const test::LogCapture log;
  const QByteArray processing =
      QByteArray(R"([{}, {"filter_chain": [{"enable": true, "name": "left arm", "chain": [
                     {"block_type": "source", "name": "a"}, )") +
      GetParam().block + R"(, {"block_type": "spectrum", "name": "never built"}]}]}])";
  const QString fault = ChainAssembly(boards_, blocks_, "c.json").Build(test::Array(processing));
  const QStringList words = QStringList{"group 1", "chain \"left arm\"", "block \"s\""} + GetParam().words;
  for (const QString& word : words) {
    EXPECT_TRUE(fault.contains(word)) << fault.toStdString() << "\ndoesn't say: " << word.toStdString();
  }
  EXPECT_FALSE(fault.contains('\n'));
  EXPECT_TRUE(log.Lines().isEmpty());
  for (const auto& block : blocks_) {
    EXPECT_NE(block, nullptr);
    EXPECT_NE(block->Name(), QString("never built"));
  }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, ChainAssemblyFault, testing::ValuesIn(Rows), [](const auto& row) {
  QString name = row.param.what;
  return name.replace(QLatin1Char(' '), QLatin1Char('_')).remove(QLatin1Char('\'')).toStdString();
});

void PrintTo(const FaultRow& row, std::ostream* out) {
  *out << row.what;
}

}  // namespace
