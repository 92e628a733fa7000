#include "acquisition/EnergyCalibration.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <functional>

namespace {

// The user's locale is one that writes numbers with a decimal comma, while this lives.
class DecimalComma {
public:
  DecimalComma() {
    EXPECT_EQ(QProcess::execute("localedef", {"-i", "de_DE", "-f", "UTF-8", folder_.filePath("comma.UTF-8")}), 0);
    qputenv("LOCPATH", folder_.path().toLocal8Bit());
    EXPECT_NE(std::setlocale(LC_NUMERIC, "comma.UTF-8"), nullptr);
  }
  ~DecimalComma() {
    std::setlocale(LC_NUMERIC, "C");
    qunsetenv("LOCPATH");
  }

private:
  QTemporaryDir folder_;
};

double Energy(const QString& expression, quint32 raw) {
  return EnergyCalibration(expression).Evaluate(raw);
}

// What a source's worker has.
constexpr uint StackBytes = 64U << 20;

void OnASourcesStack(const std::function<void()>& body) {
  const std::unique_ptr<QThread> thread(QThread::create(body));
  thread->setStackSize(StackBytes);
  thread->start();
  thread->wait();
}

struct Row {
  const char* expression;
  quint32 raw;
  double energy;
};

TEST(EnergyCalibration, ReadsNumbersWithAPointWhateverTheUsersLocale) {
  const DecimalComma locale;
  char text[8];
  std::snprintf(text, sizeof text, "%.1f", 0.5);
  ASSERT_STREQ(text, "0,5");
  EXPECT_EQ(Energy("0.25*x", 10), 2.5);
  std::snprintf(text, sizeof text, "%.1f", 0.5);
  EXPECT_STREQ(text, "0,5") << "the locale stays as it was";
}

TEST(EnergyCalibration, EvaluatesTheExpressionAtTheRawEnergy) {
  const Row rows[] = {
      {"x", 0, 0.0},           {"x", 4294967295U, 4294967295.0},
      {"0.5*x+10", 100, 60.0}, {" x * x ", 3, 9.0},
      {"-x", 7, -7.0},         {"2^x", 10, 1024.0},
      {"sqrt(x)", 16, 4.0},    {"42", 1, 42.0},
      {"1e3*x", 2, 2000.0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.expression);
    EXPECT_DOUBLE_EQ(Energy(row.expression, row.raw), row.energy);
  }
}

TEST(EnergyCalibration, OneExpressionServesManyEvents) {
  EnergyCalibration calibration("2*x");
  for (quint32 raw = 0; raw < 1000; ++raw) {
    ASSERT_DOUBLE_EQ(calibration.Evaluate(raw), 2.0 * raw);
  }
}

TEST(EnergyCalibration, EmptyOrUncompilableExpressionsGiveZero) {
  for (const char* expression : {"", " ", "x*", "*x", "(x", "x)", "y", "X", "x x", "x+", "sqrt(", "1..2", "#",
                                 "x;", "\"", "{}", "nan nan", "x/"}) {
    SCOPED_TRACE(expression);
    EXPECT_EQ(Energy(expression, 100), 0.0);
  }
}

TEST(EnergyCalibration, OnlyTheVariableXIsKnown) {
  EXPECT_EQ(Energy("x+y", 5), 0.0);
  EXPECT_EQ(Energy("energy", 5), 0.0);
}

TEST(EnergyCalibration, NotANumberAndInfinityArePassedOn) {
  EXPECT_TRUE(std::isnan(Energy("sqrt(0-1-x)", 1)));
  EXPECT_TRUE(std::isnan(Energy("(x-x)/(x-x)", 1)));
  EXPECT_TRUE(std::isinf(Energy("1/(x-x)", 1)));
}

TEST(EnergyCalibration, CharactersOutsideLatin1NeverCompile) {
  EXPECT_EQ(Energy(QString("x") + QChar(0x0416), 5), 0.0);
  EXPECT_EQ(Energy(QString("x*") + QChar(0x0662), 5), 0.0);
  EXPECT_EQ(Energy(QString("x+") + QChar(0xD83D) + QChar(0xDE00), 5), 0.0);
}

TEST(EnergyCalibration, Latin1LettersAreNoVariables) {
  EXPECT_EQ(Energy(QString("x+") + QChar(0xE9), 5), 0.0);
}

TEST(EnergyCalibration, AnExpressionOfOneMegabyteGivesZero) {
  QString sum = "x";
  sum += QString("+x").repeated(1 << 19);
  OnASourcesStack([&] {
    EXPECT_EQ(Energy(sum, 1), 0.0);
    EXPECT_EQ(Energy(QString(1 << 20, '('), 1), 0.0);
    EXPECT_EQ(Energy(QString(1 << 20, '-') + "x", 1), 0.0);
    EXPECT_EQ(Energy(QString(1 << 20, ' ') + "x", 1), 0.0);
  });
}

TEST(EnergyCalibration, TheLongestExpressionHas16384Characters) {
  const QString atLimit = QString(16383, ' ') + "x";
  ASSERT_EQ(atLimit.size(), 16384);
  EXPECT_EQ(Energy(atLimit, 7), 7.0);
  EXPECT_EQ(Energy(" " + atLimit, 7), 0.0);
}

TEST(EnergyCalibration, SumsAtTheLimitAreEvaluatedOnASourcesStack) {
  const QString sum = " x" + QString("+x").repeated(8191);
  ASSERT_EQ(sum.size(), 16384);
  OnASourcesStack([&] { EXPECT_EQ(Energy(sum, 3), 3.0 * 8192); });
}

TEST(EnergyCalibration, NestingAtTheLimitIsEvaluatedOnASourcesStack) {
  const QString parentheses = QString(8191, '(') + " x" + QString(8191, ')');
  const QString calls = QString("abs(").repeated(3276) + "0-x " + QString(3276, ')');
  const QString signs = QString(16383, '-') + "x";
  const QString functions = QString("abs ").repeated(4095) + "   x";
  const QString powers = " x" + QString("^x").repeated(8191);
  for (const QString& expression : {parentheses, calls, signs, functions, powers}) {
    ASSERT_EQ(expression.size(), 16384);
  }
  OnASourcesStack([&] {
    EXPECT_EQ(Energy(parentheses, 5), 5.0);
    EXPECT_EQ(Energy(calls, 5), 5.0);
    EXPECT_EQ(Energy(signs, 5), -5.0);
    EXPECT_EQ(Energy(functions, 5), 5.0);
    EXPECT_EQ(Energy(powers, 1), 1.0);
  });
}

TEST(EnergyCalibration, UnclosedNestingAtTheLimitGivesZeroOnASourcesStack) {
  OnASourcesStack([] {
    for (const char* part : {"(", "abs(", "x^(", "-(", "x+(", "x,(", "pow(x,", "atan2(x,"}) {
      EXPECT_EQ(Energy(QString(part).repeated(16384 / static_cast<int>(qstrlen(part))), 5), 0.0) << part;
    }
  });
}

}  // namespace
