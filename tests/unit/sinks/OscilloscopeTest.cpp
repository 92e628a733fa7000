#include "tests/unit/sinks/ScopeFixture.h"

namespace {

using test::Scope;
using test::Waves;

constexpr auto AllOn = "1,1,1,1";

TEST(Oscilloscope, isARecordingBlockWithOneInputPin) {
  const Scope scope(Scope::Shape(4, 2, 1, 1));
  EXPECT_EQ(scope.block.BlockType(), "oscilloscope");
  EXPECT_TRUE(scope.block.IsDumpCapable());
  EXPECT_EQ(scope.block.Name(), "scope");
  EXPECT_EQ(scope.block.FullPath(), "processing/0/filter_chain/main/chain/scope");
  EXPECT_EQ(scope.block.Inputs().size(), 1U);
  EXPECT_EQ(scope.block.Outputs().size(), 0U);
  EXPECT_EQ(scope.block.Fault(), "");
}

TEST(Oscilloscope, showsTheLatestWavesInEveryStateOfADump) {
  Scope scope(Scope::Shape(1, 1, 1, 0));
  scope.Enable(AllOn);
  int sample = 1;
  for (const char* command : {"stop_dump", "start_dump", "pause_dump"}) {
    scope.Ask(QString(R"({"cmd":"%1"})").arg(command));
    ASSERT_TRUE(scope.Consume(Waves(1, {{{static_cast<double>(sample)}, {}}})));
    EXPECT_EQ(scope.Traces(), QString(R"([{"data":[%1]}])").arg(sample)) << command;
    ++sample;
  }
}

TEST(Oscilloscope, usesTheFirstWavesOfAPayloadOnly) {
  Scope scope(Scope::Shape(2, 1, 1, 1));
  scope.Enable(AllOn);
  ASSERT_TRUE(scope.Consume(
      test::MessageOf(test::Energy(1, 2), Waves(1, {{{5, 6}, {1, 1}}}), Waves(2, {{{7, 8}, {0, 1}}}))));
  EXPECT_EQ(scope.Traces(), R"([{"data":[5,0]},{"data":[1,0]}])");
}

TEST(Oscilloscope, passesOverPayloadsWithoutWaves) {
  Scope scope(Scope::Shape(1, 1, 1, 0));
  scope.Enable(AllOn);
  ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {}}})));
  ASSERT_TRUE(scope.Consume(DataMessage()));
  ASSERT_TRUE(scope.Consume(test::MessageOf()));
  ASSERT_TRUE(scope.Consume(test::MessageOf(test::Energy(1, 2))));
  EXPECT_EQ(scope.Traces(), R"([{"data":[5]}])");
}

TEST(Oscilloscope, isEmptyWithoutParametersOrWithOnesThatAreNoNumbers) {
  using P = Scope;
  for (const QByteArray& parameters :
       {QByteArray(), P::Shape(2, 0, 1, 1), P::Parameter("ch_number", "\"2\""), P::Parameter("ch_number", "true"),
        P::Parameter("ch_number", "2.5"), P::Parameter("Ch_number", "2"), P::Shape(2, -1, 1, 1),
        P::Shape(2, -2147483647, -2147483647, -2147483647)}) {
    Scope scope(parameters);
    scope.Enable(AllOn);
    ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {1}}})));
    EXPECT_EQ(scope.block.Fault(), "");
    EXPECT_EQ(scope.Traces(), "[]") << parameters.constData();
  }
}

TEST(Oscilloscope, countsNegativeNumbersOfSamplesAndTracesAs0) {
  const struct {
    QByteArray shape;
    const char* traces;
  } cases[] = {{Scope::Shape(-3, 1, 1, 1), R"([{"data":[]},{"data":[]}])"},
               {Scope::Shape(1, 1, 1, -3), R"([{"data":[5]}])"},
               {Scope::Shape(1, 1, -3, -3), "[]"}};
  for (const auto& [shape, traces] : cases) {
    Scope scope(shape);
    scope.Enable("1");
    ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {1}}})));
    EXPECT_EQ(scope.Traces(), traces) << shape.constData();
  }
}

TEST(Oscilloscope, takesTheLastOfSeveralValues) {
  Scope scope(Scope::Shape(3, 3, 3, 3) + "," + Scope::Shape(2, 1, 1, 0));
  scope.Enable(AllOn);
  EXPECT_EQ(scope.Traces(), R"([{"data":[0,0]}])");
}

TEST(Oscilloscope, keepsItsShapeWhenParametersComeLater) {
  Scope scope(Scope::Shape(2, 1, 1, 0));
  EXPECT_TRUE(scope.block.ParseParameters(test::Object(R"({"parameters":[)" + Scope::Shape(3, 4, 2, 2) + "]}")));
  scope.Enable(AllOn);
  ASSERT_TRUE(scope.Consume(Waves(3, {{{5, 6, 7}, {}}, {{8, 9, 10}, {}}})));
  EXPECT_EQ(scope.Traces(), R"([{"data":[5,6]}])");
}

TEST(Oscilloscope, cannotHoldMoreTracesThanMemoryShould) {
  for (const QByteArray& shape : {Scope::Shape(2147483647, 2147483647, 2147483647, 2147483647),
                                  Scope::Shape(16777217, 1, 1, 0), Scope::Shape(0, 2147483647, 1, 1)}) {
    const Scope scope(shape);
    EXPECT_EQ(scope.block.Fault(),
              "\"sample_number\" times \"ch_number\" times (\"ch_analog\" + \"ch_digital\"): expected at most "
              "16777216, and memory for them; each of the last three at most 1048576");
  }
}

TEST(Oscilloscope, thatIsTooLargeTakesPayloadsAllTheSame) {
  Scope scope(Scope::Shape(16777217, 1, 1, 1));
  EXPECT_NE(scope.block.Fault(), "");
  scope.Enable(AllOn);
  ASSERT_TRUE(scope.Consume(Waves(1, {{{5}, {1}}})));
  EXPECT_EQ(scope.Traces(), "[]");
}

TEST(Oscilloscope, doesNotHarmWhatPassesItsEnds) {
  Scope scope(Scope::Shape(2, 2, 1, 1));
  scope.Enable("1,1,1,1,1,1,1,1,1");
  ASSERT_TRUE(scope.Consume(Waves(1000, {{{1, 2, 3}, {1, 1, 1}}, {{4}, {}}, {{5, 6, 7}, {1, 1, 1}}, {{}, {}}})));
  EXPECT_EQ(scope.Traces(), R"([{"data":[1,2]},{"data":[1,1]},{"data":[4,0]},{"data":[0,0]}])");
}

TEST(Oscilloscope, answersWholeWavesWhileNewOnesArrive) {
  Scope scope(Scope::Shape(3, 1, 1, 0));
  scope.Enable("1");
  for (int i = 0; i < 300; ++i) {
    const double value = i;
    ASSERT_TRUE(scope.feed.Push(test::MessageOf(Waves(3, {{{value, value, value}, {}}}))));
    const QJsonArray data = test::Array(scope.Traces().toUtf8())[0].toObject()["data"].toArray();
    EXPECT_EQ(data[0], data[2]);
  }
  ASSERT_TRUE(scope.Consume(DataMessage()));
  EXPECT_EQ(scope.block.FifoLevel(), 0);
}

}  // namespace
