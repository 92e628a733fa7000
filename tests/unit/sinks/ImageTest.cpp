#include "sinks/Image.h"
#include "tests/support/LogCapture.h"
#include "tests/unit/sinks/SinkFixture.h"

namespace {

using test::Energy;
using ImageSink = test::Sink<Image>;

class AnImage : public testing::Test {
protected:
  AnImage() { sink.Run(); }

  QString Immediate() { return sink.Data("immediate"); }
  QString Cumulative() { return sink.Data("cumulative"); }

  static constexpr const char* Blank = "{\"data\":[[0,0,0,0],[0,0,0,0]]}";
  ImageSink sink{{{"x_positions", "[10,20,30,40]"}, {"y_positions", "[5,6]"}}};
};

TEST_F(AnImage, laysChannelsOutRowByRow) {
  ASSERT_TRUE(sink.Consume(Energy(5, 1), Energy(0, 1), Energy(3, 1), Energy(3, 1), Energy(4, 1), Energy(7, 1)));
  EXPECT_EQ(Cumulative(), "{\"data\":[[1,0,0,2],[1,1,0,1]]}");
  EXPECT_EQ(Immediate(), "{\"data\":[[1,0,0,2],[1,1,0,1]]}");
}

TEST_F(AnImage, ignoresChannelsBehindItsLastPixelAndNegativeOnes) {
  ASSERT_TRUE(sink.Consume(Energy(8, 1), Energy(11, 1), Energy(0x7FFFFFFF, 1), Energy(0x80000000, 1),
                           Energy(0xFFFFFFFF, 1), Energy(0xFFFFFFFC, 1)));
  EXPECT_EQ(Cumulative(), Blank);
  EXPECT_EQ(Immediate(), Blank);
}

TEST_F(AnImage, countsWhateverTheEnergy) {
  ASSERT_TRUE(sink.Consume(Energy(0, 0), Energy(0, 4'294'967'295), Energy(0, 5, 0xFFFFFFFFFFFFFFFF)));
  EXPECT_EQ(Cumulative(), "{\"data\":[[3,0,0,0],[0,0,0,0]]}");
}

TEST_F(AnImage, emptiesTheImmediateImageByReadingIt_isKept) {
  ASSERT_TRUE(sink.Consume(Energy(1, 1)));
  EXPECT_EQ(Immediate(), "{\"data\":[[0,1,0,0],[0,0,0,0]]}");
  EXPECT_EQ(Immediate(), Blank);
  EXPECT_EQ(Cumulative(), "{\"data\":[[0,1,0,0],[0,0,0,0]]}");
  ASSERT_TRUE(sink.Consume(Energy(2, 1)));
  EXPECT_EQ(Immediate(), "{\"data\":[[0,0,1,0],[0,0,0,0]]}");
  ASSERT_TRUE(sink.Consume(Energy(3, 1)));
  EXPECT_EQ(Immediate(), "{\"data\":[[0,0,0,1],[0,0,0,0]]}") << "nothing of earlier readings comes back";
  EXPECT_EQ(Cumulative(), "{\"data\":[[0,1,1,1],[0,0,0,0]]}");
}

TEST_F(AnImage, leavesTheImmediateImageAtAReset_isKept) {
  ASSERT_TRUE(sink.Consume(Energy(1, 1)));
  EXPECT_EQ(sink.Tell("reset"), "[{\"response\": true}]");
  EXPECT_EQ(Cumulative(), Blank);
  EXPECT_EQ(Immediate(), "{\"data\":[[0,1,0,0],[0,0,0,0]]}");
}

TEST_F(AnImage, isReadAndEmptiedWhileItIsStoppedToo) {
  ASSERT_TRUE(sink.Consume(Energy(1, 1)));
  sink.Tell("run_control");
  ASSERT_TRUE(sink.Consume(Energy(1, 1)));
  EXPECT_EQ(Immediate(), "{\"data\":[[0,1,0,0],[0,0,0,0]]}");
  EXPECT_EQ(Immediate(), Blank);
}

TEST_F(AnImage, answersNothingToAnyOtherSource) {
  ASSERT_TRUE(sink.Consume(Energy(1, 1)));
  for (const char* source : {"", "Immediate", "CUMULATIVE", "cumulative ", "heatmap", "scatter"}) {
    EXPECT_EQ(sink.Data(source), "") << source;
  }
  EXPECT_EQ(sink.Tell("get_data"), "");
  EXPECT_EQ(Immediate(), "{\"data\":[[0,1,0,0],[0,0,0,0]]}") << "asking in vain empties nothing";
}

TEST_F(AnImage, doesNotLookAtChannels) {
  ASSERT_TRUE(sink.Consume(Energy(1, 1)));
  EXPECT_EQ(sink.Ask(R"({"args":[{"cmd":"get_data","source":"cumulative","channels":[7]}]})"),
            "{\"data\":[[0,1,0,0],[0,0,0,0]]}");
}

TEST_F(AnImage, keepsItsSizeWhenParametersReachTheLiveBlock) {
  EXPECT_TRUE(sink.Apply({{"x_positions", "[1]"}, {"y_positions", "[]"}}));
  ASSERT_TRUE(sink.Consume(Energy(7, 1)));
  EXPECT_EQ(Cumulative(), "{\"data\":[[0,0,0,0],[0,0,0,1]]}");
}

TEST(ImageParameters, countByTheNumberOfTheirEntriesOnly_isKept) {
  for (const auto& [x, y] : {std::pair{"[0,0]", "[0]"}, std::pair{"[-5,2147483647]", "[-1]"},
                             std::pair{R"(["a",null])", R"([{}])"}, std::pair{"[1e300,2.5]", "[[1,2,3]]"}}) {
    ImageSink sink({{"x_positions", x}, {"y_positions", y}});
    sink.Run();
    ASSERT_TRUE(sink.Consume(Energy(1, 1), Energy(2, 1)));
    EXPECT_EQ(sink.Data("cumulative"), "{\"data\":[[0,1]]}") << x << " and " << y;
  }
}

TEST(ImageParameters, withoutColumnsOrRowsMakeAnImageThatCountsNothing) {
  struct Row {
    const char *x, *y, *answer;
  };
  for (const Row row : {Row{"[]", "[1,2]", "{\"data\":[[],[]]}"}, Row{"[]", "[]", "{\"data\":[]}"},
                        Row{"[1,2]", "[]", "{\"data\":[]}"}, Row{"3", "[1]", "{\"data\":[[]]}"},
                        Row{"null", "null", "{\"data\":[]}"}, Row{R"("[1]")", "{}", "{\"data\":[]}"}}) {
    ImageSink sink({{"x_positions", row.x}, {"y_positions", row.y}});
    sink.Run();
    ASSERT_TRUE(sink.Consume(Energy(0, 1), Energy(1, 1), Energy(0xFFFFFFFF, 1)));
    EXPECT_EQ(sink.Data("cumulative"), row.answer) << row.x << " and " << row.y;
    EXPECT_EQ(sink.Data("immediate"), row.answer) << row.x << " and " << row.y;
    EXPECT_EQ(sink.Tell("reset"), "[{\"response\": true}]");
    EXPECT_EQ(sink.block.Fault(), "");
  }
}

TEST(ImageParameters, aNameGivenTwiceTakesItsLastValue) {
  ImageSink sink({{"x_positions", "[1,2,3]"}, {"y_positions", "[1]"}, {"x_positions", "[1]"}});
  EXPECT_EQ(sink.Data("cumulative"), "{\"data\":[[0]]}");
}

TEST(ImageParameters, ofTooManyPixelsAreAFaultAndDiscardTheEvents) {
  ImageSink sink({{"x_positions", test::Zeros(8'193)}, {"y_positions", test::Zeros(8'192)}});
  EXPECT_EQ(sink.block.Fault(),
            "entries of \"y_positions\" times those of \"x_positions\": expected at most 67108864, and memory for "
            "them; found 8192 x 8193");
  sink.Run();
  EXPECT_TRUE(sink.Consume(Energy(0, 1)));
}

TEST(ImageParameters, ofALongRowLayEveryChannelOutInIt) {
  ImageSink sink({{"x_positions", test::Zeros(100'000)}, {"y_positions", "[0]"}});
  sink.Run();
  ASSERT_TRUE(sink.Consume(Energy(99'999, 1), Energy(100'000, 1)));
  EXPECT_EQ(sink.Data("cumulative"), "{\"data\":[[" + QString("0,").repeated(99'999) + "1]]}");
}

}  // namespace
