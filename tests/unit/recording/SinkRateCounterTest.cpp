#include "tests/unit/recording/SinkRateCounterFixture.h"

#include <QMetaMethod>

namespace {

using test::Rates;
using test::RateSink;

constexpr auto Success = R"([{"response": true}])";

QByteArray Depth(const QByteArray& value) {
  return R"({"param_name":"history_depth","param_value":)" + value + "}";
}

DataMessage Many(int records) {
  DataMessage message = test::MessageOf();
  for (int i = 0; i < records; ++i) {
    message.batch->records.push_back(Rates(1, i));
  }
  return message;
}

TEST(SinkRateCounter, isARecordingBlockWithOneInputPin) {
  const RateSink sink;
  EXPECT_EQ(sink.block.BlockType(), "rate_counters_sink");
  EXPECT_TRUE(sink.block.IsDumpCapable());
  EXPECT_EQ(sink.block.Name(), "rates");
  EXPECT_EQ(sink.block.FullPath(), "processing/0/filter_chain/main/chain/rates");
  EXPECT_EQ(sink.block.Inputs().size(), 1U);
  EXPECT_EQ(sink.block.Outputs().size(), 0U);
  EXPECT_EQ(sink.block.Fault(), "");
}

TEST(SinkRateCounter, hasItsSlotsInOrder) {
  const std::pair<const char*, QList<QByteArray>> rows[] = {
      {"NewDataInTheInputPin(int)", {"FifoLevel"}},
      {"FifoLevel()", {}},
      {"InterpretMessage(QString*,QString*)", {"data_in", "data_out"}},
  };
  const QMetaObject& meta = SinkRateCounter::staticMetaObject;
  int index = meta.methodOffset();
  for (const auto& [signature, names] : rows) {
    const QMetaMethod method = meta.method(index++);
    EXPECT_EQ(method.methodSignature(), signature);
    EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << signature;
    EXPECT_EQ(method.parameterNames(), names) << signature;
  }
  EXPECT_EQ(meta.methodCount(), index);
}

TEST(SinkRateCounter, hasNoImmediateDataBeforeTheFirstRecord) {
  RateSink sink;
  EXPECT_EQ(sink.Immediate(), R"({"status": "nodata"})");
  EXPECT_EQ(sink.Data(), R"({"data":[]})");
}

TEST(SinkRateCounter, showsTheLatestRecordWithAllItsValues) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(Rates(3, 1)));
  ASSERT_TRUE(sink.Consume(test::SpeakingRates()));
  EXPECT_EQ(sink.Immediate(),
            R"({"status": "ok", "timestamp":99,"rates_in":[1.5,1.23457e+06],"counts_in":[4294967298,3],)"
            R"("rates_out":[0.1,2],"counts_out":[4,18446744073709551615],"rates_in_start":[0.25,1e-07],)"
            R"("rates_out_start":[100000,1e+06]})");
}

TEST(SinkRateCounter, showsARecordWithoutChannels) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(Rates(0, 0, 0xFFFF'FFFF'FFFF'FFFF)));
  EXPECT_EQ(sink.Immediate(),
            R"({"status": "ok", "timestamp":18446744073709551615,"rates_in":[],"counts_in":[],"rates_out":[],)"
            R"("counts_out":[],"rates_in_start":[],"rates_out_start":[]})");
  EXPECT_EQ(sink.Data(),
            R"({"data":[{"timestamp":18446744073709551615,"rates_in":[],"counts_in":[],"rates_out":[],)"
            R"("counts_out":[]}]})");
}

TEST(SinkRateCounter, showsTheHistoryNewestFirst) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(test::MessageOf(Rates(2, 5, 10), Rates(1, 6, 11))));
  ASSERT_TRUE(sink.Consume(test::SpeakingRates()));
  EXPECT_EQ(sink.Data(),
            R"({"data":[{"timestamp":99,"rates_in":[1.5,1.23457e+06],"counts_in":[4294967298,3],)"
            R"("rates_out":[0.1,2],"counts_out":[4,18446744073709551615]},)"
            R"({"timestamp":11,"rates_in":[6],"counts_in":[6],"rates_out":[6],"counts_out":[6]},)"
            R"({"timestamp":10,"rates_in":[5,6],"counts_in":[5,6],"rates_out":[5,6],"counts_out":[5,6]}]})");
}

TEST(SinkRateCounter, aResetEmptiesTheHistoryButNotTheLatestRecord) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(test::MessageOf(Rates(0, 0, 10), Rates(0, 0, 11))));
  EXPECT_EQ(sink.Ask(R"({"args":[{"cmd":"reset"}]})"), Success);
  EXPECT_EQ(sink.Data(), R"({"data":[]})");
  EXPECT_EQ(test::Object(sink.Immediate().toUtf8())["timestamp"].toInt(), 11);
}

TEST(SinkRateCounter, keepsOneRecordMoreThanItsDepth) {
  const struct {
    QByteArray parameters;
    int kept;
  } cases[] = {{"", 601},
               {Depth("2"), 3},
               {Depth("0"), 1},
               {Depth("-5"), 1},
               {Depth("\"2\""), 1},
               {Depth("[2]"), 1},
               {Depth("2.5"), 1},
               {Depth("-2147483648"), 1},
               {Depth("700"), 650},
               {Depth("null"), 1},
               {Depth("100000"), 650},
               {Depth("3") + "," + Depth("4"), 5},
               {R"({"param_name":"History_depth","param_value":2})", 601}};
  for (const auto& [parameters, kept] : cases) {
    RateSink sink(parameters);
    EXPECT_EQ(sink.block.Fault(), "");
    ASSERT_TRUE(sink.Consume(Many(650)));
    EXPECT_EQ(sink.HistorySize(), kept) << parameters.constData();
  }
}

TEST(SinkRateCounter, cannotKeepMoreThanAHundredThousandRecords) {
  const RateSink sink(Depth("100001"));
  EXPECT_EQ(sink.block.Fault(), R"("history_depth": expected at most 100000; found 100001)");
  EXPECT_EQ(RateSink(Depth("2147483647")).block.Fault(),
            R"("history_depth": expected at most 100000; found 2147483647)");
}

TEST(SinkRateCounter, readsItsDepthOnce) {
  RateSink sink(Depth("2"));
  EXPECT_TRUE(sink.block.ParseParameters(test::Object(R"({"parameters":[)" + Depth("4") + "]}")));
  ASSERT_TRUE(sink.Consume(Many(9)));
  EXPECT_EQ(sink.HistorySize(), 3);
}

TEST(SinkRateCounter, offersItsChannelMap) {
  constexpr auto Query = R"({"args":[{"cmd":"get_channel_map"}]})";
  RateSink without;
  EXPECT_EQ(without.Ask(Query), R"({"channel_map":[]})");
  RateSink sink(R"({"param_name":"channel_map","param_type":"array_string","param_value":["Ge \"1\"","µ","T0"]})");
  EXPECT_EQ(sink.Ask(Query), QStringLiteral(R"({"channel_map":["Ge \"1\"","µ","T0"]})"));
  EXPECT_TRUE(sink.block.ParseParameters(
      test::Object(R"({"parameters":[{"param_name":"channel_map","param_value":["a"]}]})")));
  EXPECT_EQ(sink.Ask(Query), R"({"channel_map":["a"]})");
}

TEST(SinkRateCounter, readsNamesOfItsChannelMapThatAreNoTextsAsEmpty) {
  constexpr auto Query = R"({"args":[{"cmd":"get_channel_map"}]})";
  RateSink sink(R"({"param_name":"channel_map","param_value":["a",1,null,true,["b"],{"c":"d"},"e"]})");
  EXPECT_EQ(sink.Ask(Query), R"({"channel_map":["a","","","","","","e"]})");
  EXPECT_EQ(RateSink(R"({"param_name":"channel_map","param_value":"a"})").Ask(Query), R"({"channel_map":[]})");
}

TEST(SinkRateCounter, aLaterElementOfAQueryOverridesAnEarlierOne) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(Rates(0, 0, 10)));
  const QString nothing = R"({"data":[]})";
  EXPECT_TRUE(sink.Ask(R"({"args":[{"cmd":"reset"},{"cmd":"get_data","source":"data"}]})").contains("10"));
  EXPECT_TRUE(sink.Ask(R"({"args":[{"source":"data"},{"cmd":"get_data"},{}]})").contains(R"({"data":[{)"));
  EXPECT_TRUE(
      sink.Ask(R"({"args":[{"source":"data","cmd":"get_data"},{"source":"immediate"}]})").contains(R"("status")"));
  EXPECT_NE(sink.Data(), nothing);
  EXPECT_EQ(sink.Ask(R"({"args":[{"cmd":"get_data","source":"data"},{"cmd":"reset"}]})"), Success);
  EXPECT_EQ(sink.Data(), nothing);
}

TEST(SinkRateCounter, answersNothingToWhatItDoesNotKnow) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(Rates(1, 5)));
  for (const char* query : {"",
                            "no JSON",
                            "[]",
                            "{}",
                            R"({"cmd":"reset"})",
                            R"({"args":{"cmd":"reset"}})",
                            R"({"args":[]})",
                            R"({"args":["reset"]})",
                            R"({"args":[{"cmd":"Reset"}]})",
                            R"({"args":[{"cmd":"reset "}]})",
                            R"({"args":[{"cmd":["reset"]}]})",
                            R"({"args":[{"cmd":"reset"},{"cmd":5}]})",
                            R"({"args":[{"cmd":"reset"},{"cmd":"restart_dump"}]})",
                            R"({"args":[{"cmd":"get_data"}]})",
                            R"({"args":[{"cmd":"get_data","source":"Data"}]})",
                            R"({"args":[{"cmd":"get_data","source":""}]})",
                            R"({"args":[{"cmd":"get_data","source":true}]})",
                            R"({"args":[{"cmd":"get_data"}],"source":"data"})",
                            R"({"args":[{"cmd":"set_dump_events"}],"dump_events":5})",
                            R"({"args":[{"cmd":"data_get_status"}]})"}) {
    EXPECT_EQ(sink.Ask(query), "") << query;
  }
  EXPECT_EQ(sink.HistorySize(), 1);
}

TEST(SinkRateCounter, appendsItsAnswersAndLeavesTheQueryAlone) {
  RateSink sink;
  const std::pair<const char*, const char*> rows[] = {
      {R"({"args":[{"cmd":"get_data","source":"immediate"}]})", R"({"status": "nodata"})"},
      {R"({"args":[{"cmd":"get_data","source":"data"}]})", R"({"data":[]})"},
      {R"({"args":[{"cmd":"reset"}]})", Success},
      {R"({"args":[{"cmd":"set_dump_type"}],"file_type":"CSV"})", Success},
      {R"({"args":[{"cmd":"set_dump_path"}],"file_path":"/tmp"})", Success},
      {R"({"args":[{"cmd":"start_dump"}],"run_id":"7"})", Success},
      {R"({"args":[{"cmd":"pause_dump"}]})", Success},
      {R"({"args":[{"cmd":"stop_dump"}]})", Success},
      {R"({"args":[{"cmd":"unknown"}]})", ""},
  };
  for (const auto& [text, expected] : rows) {
    QString query = text;
    QString answer = "before ";
    sink.block.InterpretMessage(&query, &answer);
    EXPECT_EQ(answer, QString("before ") + expected) << text;
    EXPECT_EQ(query, text);
  }
}

TEST(SinkRateCounter, passesOverRecordsOfOtherKindsAndEmptyMessages) {
  RateSink sink;
  ASSERT_TRUE(sink.Consume(DataMessage()));
  ASSERT_TRUE(sink.Consume(test::MessageOf()));
  ASSERT_TRUE(sink.Consume(test::MessageOf(test::Energy(1, 2), Rates(0, 0, 7), test::Energy(3, 4))));
  EXPECT_EQ(sink.HistorySize(), 1);
}

TEST(SinkRateCounter, answersWhileRecordsArrive) {
  RateSink sink(Depth("10"));
  for (int i = 0; i < 200; ++i) {
    ASSERT_TRUE(sink.feed.Push(Many(5)));
    EXPECT_LE(sink.HistorySize(), 11);
    EXPECT_NE(sink.Immediate(), "");
    EXPECT_EQ(sink.Ask(R"({"args":[{"cmd":"reset"}]})"), Success);
  }
  ASSERT_TRUE(sink.Consume(Many(1)));
  EXPECT_EQ(sink.block.FifoLevel(), 0);
}

}  // namespace
