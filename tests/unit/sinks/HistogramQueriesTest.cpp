#include "tests/unit/sinks/SpectrumFixture.h"

namespace {

using test::Energy;
using test::Spectrum;

// Answers are spelled as C++ texts with escapes, as they stand in the protocol's description.
const QString Success = "[{\"response\": true}]";
const QString Idle = "[{\"response\": true, \"status\":\"idle\"}]";
const QString Freerun = "[{\"response\": true, \"status\":\"freerun\"}]";

const QString Status = R"({"args":[{"cmd":"data_get_status"}]})";

class ASpectrum : public testing::Test {
protected:
  Spectrum spectrum{Spectrum::Size(3, 4)};
};

TEST_F(ASpectrum, givesTheSelectedChannelsInAscendingOrder) {
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 0), Energy(2, 1), Energy(2, 1), Energy(1, 2)));
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"get_data","channels":[2,0]}]})"),
            "[{\"data\":[1,0,0]},{\"data\":[0,2,0]}]");
}

TEST_F(ASpectrum, selectsChannelsAsListed) {
  const QString one = "{\"data\":[0,0,0]}";
  const std::pair<const char*, QString> rows[] = {
      {"[]", "[]"},
      {"[0]", "[" + one + "]"},
      {"[0,0]", "[" + one + "]"},
      {"[3,2,1,0,0,1]", "[" + one + "," + one + "," + one + "," + one + "]"},
      {"[4]", "[]"},
      {"[-1]", "[]"},
      {"[-1,4,99,2147483647,3]", "[" + one + "]"},
      {"[\"1\"]", "[" + one + "]"},  // what is no number selects channel 0
      {"0", "[]"},
      {"null", "[]"},
  };
  for (const auto& [channels, answer] : rows) {
    EXPECT_EQ(spectrum.Ask(QStringLiteral(R"({"args":[{"cmd":"get_data","channels":%1}]})").arg(channels)), answer)
        << channels;
  }
}

TEST_F(ASpectrum, givesAnEmptyListWithoutChannels) {
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"get_data"}]})"), "[]");
}

TEST_F(ASpectrum, collectsChannelsOfAllElements) {
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(1, 1), Energy(3, 2)));
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"channels":[3]},{"cmd":"get_data"},{"channels":[1]}]})"),
            "[{\"data\":[0,1,0]},{\"data\":[0,0,1]}]");
}

TEST_F(ASpectrum, getDataChangesNothing) {
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1)));
  EXPECT_EQ(spectrum.Channel(0), "[{\"data\":[0,1,0]}]");
  EXPECT_EQ(spectrum.Channel(0), "[{\"data\":[0,1,0]}]");
  EXPECT_EQ(spectrum.Ask(Status), Freerun);
}

TEST_F(ASpectrum, isIdleBeforeAnyRunControl) {
  EXPECT_EQ(spectrum.Ask(Status), Idle);
}

TEST_F(ASpectrum, runControlStartsWithFreerunAndStopsWithAnythingElse) {
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"run_control","status":"freerun"}]})"), Success);
  EXPECT_EQ(spectrum.Ask(Status), Freerun);
  for (const char* other : {"\"FreeRun\"", "\"FREERUN\"", "\"freerun \"", "\"stop\"", "\"idle\"", "\"\"", "1",
                            "true", "null", "[\"freerun\"]"}) {
    spectrum.Run();
    ASSERT_EQ(spectrum.Ask(Status), Freerun);
    EXPECT_EQ(spectrum.Ask(QStringLiteral(R"({"args":[{"cmd":"run_control","status":%1}]})").arg(other)), Success);
    EXPECT_EQ(spectrum.Ask(Status), Idle) << other;
  }
}

TEST_F(ASpectrum, runControlWithoutAStatusStops) {
  spectrum.Run();
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"run_control"}]})"), Success);
  EXPECT_EQ(spectrum.Ask(Status), Idle);
}

TEST_F(ASpectrum, countsOnlyWhileItRunsAndKeepsItsCountsWhenStopped) {
  ASSERT_TRUE(spectrum.Consume(Energy(0, 0)));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1)));
  spectrum.Ask(R"({"args":[{"cmd":"run_control","status":"FreeRun"}]})");
  ASSERT_TRUE(spectrum.Consume(Energy(0, 2)));
  EXPECT_EQ(spectrum.Channel(0), "[{\"data\":[0,1,0]}]");
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 2)));
  EXPECT_EQ(spectrum.Channel(0), "[{\"data\":[0,1,1]}]");
}

TEST_F(ASpectrum, resetClearsEveryChannelButNotTheRunFlag) {
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1), Energy(3, 2)));
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"reset"}]})"), Success);
  EXPECT_EQ(spectrum.Channel(0), "[{\"data\":[0,0,0]}]");
  EXPECT_EQ(spectrum.Channel(3), "[{\"data\":[0,0,0]}]");
  EXPECT_EQ(spectrum.Ask(Status), Freerun);
  ASSERT_TRUE(spectrum.Consume(Energy(3, 2)));
  EXPECT_EQ(spectrum.Channel(3), "[{\"data\":[0,0,1]}]");
}

TEST_F(ASpectrum, resetOfAStoppedSpectrumLeavesItStopped) {
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"reset"}]})"), Success);
  EXPECT_EQ(spectrum.Ask(Status), Idle);
}

TEST_F(ASpectrum, theLastCommandOfSeveralElementsIsDone) {
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1)));
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"reset","channels":[0]},{"cmd":"get_data"}]})"),
            "[{\"data\":[0,1,0]}]");
}

TEST_F(ASpectrum, answersNothingToUnknownCommandsAndMalformedQueries) {
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1)));
  const QString rows[] = {
      R"({"args":[{"cmd":"Reset"}]})",
      R"({"args":[{"cmd":"RESET"}]})",
      R"({"args":[{"cmd":" reset"}]})",
      R"({"args":[{"cmd":"get_data "}]})",
      R"({"args":[{"cmd":"get_datas"}]})",
      R"({"args":[{"cmd":""}]})",
      R"({"args":[{"cmd":5}]})",
      R"({"args":[{"cmd":["reset"]}]})",
      R"({"args":[{}]})",
      R"({"args":[]})",
      R"({"args":{"cmd":"reset"}})",
      R"({"cmd":"reset"})",
      R"([{"cmd":"reset"}])",
      "",
      "reset",
      "{",
      "5",
      "null",
      R"({"args":[{"cmd":"reset"}])",
      QString(100'000, '['),
      R"({"args":[{"cmd":"reset)",
  };
  for (const QString& query : rows) {
    EXPECT_EQ(spectrum.Ask(query), "") << query.left(60).toStdString();
  }
  EXPECT_EQ(spectrum.Channel(0), "[{\"data\":[0,1,0]}]");
  EXPECT_EQ(spectrum.Ask(Status), Freerun);
}

TEST_F(ASpectrum, appendsItsAnswerAndLeavesTheQueryAlone) {
  QString query = Status;
  QString answer = "before ";
  spectrum.block.InterpretMessage(&query, &answer);
  EXPECT_EQ(answer, "before " + Idle);
  EXPECT_EQ(query, Status);
}

TEST_F(ASpectrum, isQueriedThroughItsMetaObject) {
  QString query = Status;
  QString answer;
  ASSERT_TRUE(QMetaObject::invokeMethod(&spectrum.block, "InterpretMessage", Qt::DirectConnection,
                                        Q_ARG(QString*, &query), Q_ARG(QString*, &answer)));
  EXPECT_EQ(answer, Idle);
}

TEST_F(ASpectrum, takesAQueryOfManyMegabytes) {
  QString channels = "0";
  for (int i = 0; i < 500'000; ++i) {
    channels += ",99";
  }
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"get_data","channels":[)" + channels + "]}]}"),
            "[{\"data\":[0,0,0]}]");
}

TEST_F(ASpectrum, answersWhileItCounts) {
  spectrum.Run();
  int fed = 0;
  ASSERT_TRUE(test::WaitFor([&] {
    for (int i = 0; i < 100; ++i, ++fed) {
      spectrum.feed.Push(test::MessageOf(Energy(0, 1)));
    }
    return spectrum.Counts(0)[1] > 5'000;
  }));
  ASSERT_TRUE(spectrum.Consume());
  EXPECT_EQ(spectrum.Counts(0)[1], fed);
}

DataMessage ManyEventsInBinOne() {
  DataMessage message = test::MessageOf(Energy(0, 1));
  for (int i = 1; i < 1'000; ++i) {
    message.batch->records.push_back(message.batch->records.front()->Clone());
  }
  return message;
}

// What a query has shown before the reset is gone after it, whatever the worker was doing meanwhile.
TEST_F(ASpectrum, resetWhileItCountsLeavesAtMostWhatCameAfter) {
  spectrum.Run();
  for (int round = 0; round < 200; ++round) {
    constexpr int Messages = 10;
    for (int i = 0; i < Messages; ++i) {
      spectrum.feed.Push(ManyEventsInBinOne());
    }
    int shown = 0;
    ASSERT_TRUE(test::WaitFor([&] {
      spectrum.block.NewDataInTheInputPin(1);
      shown = spectrum.Counts(0)[1];
      return shown > 0;
    }));
    EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"reset"}]})"), Success);
    ASSERT_TRUE(spectrum.Consume());
    ASSERT_LE(spectrum.Counts(0)[1], Messages * 1'000 - shown);
    spectrum.Ask(R"({"args":[{"cmd":"reset"}]})");
  }
}

TEST_F(ASpectrum, stoppedWhileItCountsCountsNothingAfterItsAnswer) {
  for (int round = 0; round < 50; ++round) {
    spectrum.Run();
    for (int i = 0; i < 10; ++i) {
      spectrum.feed.Push(ManyEventsInBinOne());
    }
    spectrum.block.NewDataInTheInputPin(1);
    spectrum.Ask(R"({"args":[{"cmd":"run_control","status":"idle"}]})");
    const int shown = spectrum.Counts(0)[1];
    ASSERT_TRUE(spectrum.Consume());
    ASSERT_EQ(spectrum.Counts(0)[1], shown);
  }
}

}  // namespace
