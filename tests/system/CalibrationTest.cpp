#include "tests/system/SystemTest.h"

namespace test {

namespace {

struct Expression {
  const char* name;
  QString text;
};

void PrintTo(const Expression& value, std::ostream* out) {
  *out << value.name;
}

class CalibrationTest : public SystemTest, public testing::WithParamInterface<Expression> {};

TEST_P(CalibrationTest, EventsAreCountedByTheirRawEnergies) {
  Change(QStringLiteral("processing/0/filter_chain/0/chain/0/parameters/1/param_value"), GetParam().text);
  StartAndWaitUntilReady();
  const QStringList lines = server.ErrorLines();
  RunSpectrum();
  board.FeedRamp(3, 0, 200);
  board.FeedRamp(3, 200, 300);
  ExpectEachBinOnce(3, 0, 500);
  EXPECT_EQ(server.ErrorLines(), lines) << "nothing is reported";
}

constexpr int Megabyte = 1'000'000;

std::vector<Expression> Expressions() {
  return {
      {"Empty", QString()},
      {"Linear", QStringLiteral("2 * x + 1")},
      {"Unfinished", QStringLiteral("x*")},
      {"UnknownName", QStringLiteral("y")},
      {"NotANumber", QStringLiteral("0/0")},
      {"NotANumberForSome", QStringLiteral("sqrt(100-x)")},
      {"OutsideLatin1", QStringLiteral("x * \u03c0")},
      {"AMegabyteOfSums", QStringLiteral("x+").repeated(Megabyte / 2) + QLatin1Char('x')},
      {"AMegabyteOfBrackets",
       QString(Megabyte / 2, QLatin1Char('(')) + QLatin1Char('x') + QString(Megabyte / 2, QLatin1Char(')'))},
      {"AMegabyteUnfinished", QString(Megabyte, QLatin1Char('('))},
      {"AMegabyteOfSigns", QString(Megabyte, QLatin1Char('-')) + QLatin1Char('x')},
      {"AsDeepAsIsCompiled", QString(8191, QLatin1Char('(')) + QLatin1Char('x') + QString(8191, QLatin1Char(')'))},
  };
}

std::string NameOf(const testing::TestParamInfo<Expression>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(EveryExpression, CalibrationTest, testing::ValuesIn(Expressions()), NameOf);

}  // namespace

}  // namespace test
