#include "tests/unit/boards/HvFixture.h"

#include <QMetaMethod>

namespace {

class HvTest : public HvFixture {
protected:
  static constexpr const char* NotFound =
      "Warning: a hv source block  \"hv\"  has been detected but the related board has not been found";
};

TEST_F(HvTest, HasNoPinsAndTakesNoPartInRuns) {
  const HV& hv = MakeBound();
  EXPECT_EQ(hv.BlockType(), QString("hv"));
  EXPECT_FALSE(hv.IsDumpCapable());
  EXPECT_TRUE(hv.Inputs().empty());
  EXPECT_TRUE(hv.Outputs().empty());
  EXPECT_EQ(hv.Fault(), QString());
}

TEST_F(HvTest, AnswersThroughASlotOfTheUsualSignature) {
  const QMetaObject& meta = HV::staticMetaObject;
  const int index = meta.indexOfSlot("InterpretMessage(QString*,QString*)");
  ASSERT_GE(index, 0);
  EXPECT_EQ(meta.method(index).parameterNames(), (QList<QByteArray>{"data_in", "data_out"}));
}

TEST_F(HvTest, StandsBelowHardwareUnderItsBoardsName) {
  const HV& hv = MakeBound();
  EXPECT_EQ(hv.property("Name").toString(), QString("hv"));
  EXPECT_EQ(hv.property("FullPath").toString(), QString("Hardware/det"));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(HvTest, ASourceThatNamesNoBoardIsLoggedAndStillGivesThePath) {
  const HV& hv = Make(R"("name": "hv", "sources": [{"source": "Det"}])");
  EXPECT_EQ(hv.FullPath(), QString("Hardware/Det"));
  EXPECT_EQ(log_.Lines(), QStringList{NotFound});
  EXPECT_EQ(All(), R"({"response":"error", "reason":"Board not connected"})");
}

TEST_F(HvTest, OfTwoBoardsOfOneNameTheFirstIsBound) {
  AddBoard("det").ApplyConfigs(test::Object(R"({"configs": [{"elements": [{"name": "x"}, {"name": "y"}]}]})"));
  SetParameters({{"first", "\\f", "u32", ""}});
  MakeBound();
  EXPECT_EQ(All(), R"({"response":"ok","first":<\f>})");
}

TEST_F(HvTest, TheLastOfSeveralSourcesIsBound) {
  AddBoard("second").ApplyConfigs(
      test::Object(R"({"configs": [{"elements": [{"name": "s", "path": "\\s", "value_type": "u32"}]}]})"));
  const HV& hv = Make(R"("name": "hv", "sources": [{"source": "det"}, {"source": "second"}])");
  EXPECT_EQ(hv.FullPath(), QString("Hardware/second"));
  EXPECT_EQ(All(), R"({"response":"ok","s":<\s>})");
}

TEST_F(HvTest, ALaterSourceThatNamesNoBoardMovesThePathOnly) {
  SetParameters({{"a", "\\a", "u32", ""}});
  const HV& hv = Make(R"("name": "hv", "sources": [{"source": "det"}, {"source": "gone"}])");
  EXPECT_EQ(hv.FullPath(), QString("Hardware/gone"));
  EXPECT_EQ(log_.Lines(), QStringList{NotFound});
  EXPECT_EQ(All(), R"({"response":"ok","a":<\a>})");
}

TEST_F(HvTest, WithoutSourcesItKeepsItsPathInTheChainAndHasNoBoard) {
  for (const char* keys : {R"("name": "hv")", R"("name": "hv", "sources": [])", R"("name": "hv", "sources": {})",
                           R"("name": "hv", "sources": "det")"}) {
    SCOPED_TRACE(keys);
    const HV& hv = Make(keys);
    EXPECT_EQ(hv.Name(), QString("hv"));
    EXPECT_EQ(hv.FullPath(), QString("processing/0/x"));
    EXPECT_EQ(All(), R"({"response":"error", "reason":"Board not connected"})");
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(HvTest, SourcesOfWrongTypesNameABoardWithoutAName) {
  for (const char* source : {"5", "null", "[]", "\"det\"", "{}", R"({"source": 5})", R"({"Source": "det"})"}) {
    SCOPED_TRACE(source);
    log_.Clear();
    const HV& hv = Make(QByteArray(R"("name": "hv", "sources": [)") + source + "]");
    EXPECT_EQ(hv.FullPath(), QString("Hardware/"));
    EXPECT_EQ(log_.Lines(), QStringList{NotFound});
  }
}

TEST_F(HvTest, WithoutABoardListConstructionStopsBeforeTheName) {
  const QJsonObject keys = test::Object(
      R"({"name": "hv", "sources": [{"source": "det"}],
          "parameters": [{"param_name": "n_channels", "param_value": 70000}]})");
  block_ = std::make_unique<HV>(nullptr, ChainContext{nullptr, nullptr, "processing/0/x", "c.json"}, keys);
  EXPECT_EQ(block_->BlockType(), QString("hv"));
  EXPECT_EQ(block_->Name(), QString());
  EXPECT_EQ(block_->FullPath(), QString("processing/0/x"));
  EXPECT_EQ(block_->Fault(), QString());
  EXPECT_TRUE(log_.Lines().isEmpty());
  EXPECT_EQ(All(), R"({"response":"error", "reason":"Board not connected"})");
  EXPECT_EQ(AnswerTo(R"({"args": [{"cmd": "hv_global_on"}]})"), "");
}

TEST_F(HvTest, ABlockThatIsNoObjectHasNoName) {
  const HV hv(nullptr, ChainContext{&boards_, nullptr, "p", "c"}, QJsonValue(5));
  EXPECT_EQ(hv.Name(), QString());
  EXPECT_EQ(hv.FullPath(), QString("p"));
}

struct CountRow {
  const char* parameters;
  const char* values;  // of the array parameter \a
};

TEST_F(HvTest, TheChannelCountIsTheLastIntegerOfItsName) {
  const CountRow rows[] = {
      {R"([{"param_name": "n_channels", "param_value": 1}])", R"([<\Channel0\a>])"},
      {R"([{"param_name": "n_channels", "param_value": 3}])", R"([<\Channel0\a>,<\Channel1\a>,<\Channel2\a>])"},
      {R"([{"param_name": "n_channels", "param_value": 3}, {"param_name": "n_channels", "param_value": 1}])",
       R"([<\Channel0\a>])"},
      {R"([{"param_name": "n_channels", "param_value": 70000}, {"param_name": "n_channels", "param_value": 1}])",
       R"([<\Channel0\a>])"},
      {R"([{"param_name": "n_channels", "param_value": 1}, {"param_name": "N_channels", "param_value": 2},
           {"param_name": "n_channel", "param_value": 2}, 7])",
       R"([<\Channel0\a>])"},
      {R"([{"param_name": "n_channels", "param_value": 0}])", "[]"},
      {R"([{"param_name": "n_channels", "param_value": -1}])", "[]"},
      {R"([{"param_name": "n_channels", "param_value": -2147483648}])", "[]"},
      {R"([{"param_name": "n_channels", "param_value": "2"}])", "[]"},
      {R"([{"param_name": "n_channels", "param_value": 2.5}])", "[]"},
      {R"([{"param_name": "n_channels", "param_value": 1e30}])", "[]"},
      {R"([{"param_name": "n_channels"}])", "[]"},
      {"[]", "[]"},
      {"5", "[]"},
  };
  SetParameters({{"a", "\\a", "u32_array", ""}});
  for (const auto& [parameters, values] : rows) {
    SCOPED_TRACE(parameters);
    const HV& hv = Make(QByteArray(R"("sources": [{"source": "det"}], "parameters": )") + parameters);
    EXPECT_EQ(hv.Fault(), QString());
    EXPECT_EQ(All(), std::string(R"({"response":"ok","a":)") + values + "}");
  }
}

TEST_F(HvTest, AMissingParameterListMeansNoChannels) {
  SetParameters({{"a", "\\a", "u32_array", ""}});
  Make(R"("sources": [{"source": "det"}])");
  EXPECT_EQ(All(), R"({"response":"ok","a":[]})");
}

TEST_F(HvTest, MoreChannelsThanAnyBoardHasAreAFault) {
  EXPECT_EQ(MakeBound("1024").Fault(), QString());
  EXPECT_EQ(MakeBound("1025").Fault(), QString("\"n_channels\": expected at most 1024; found 1025"));
  EXPECT_EQ(MakeBound("2147483647").Fault(), QString("\"n_channels\": expected at most 1024; found 2147483647"));
}

TEST_F(HvTest, ParametersCanChangeOnALiveBlock) {
  SetParameters({{"a", "\\a", "u32_array", ""}});
  HV& hv = MakeBound("2");
  const char* one = R"({"response":"ok","a":[<\Channel0\a>]})";
  const auto set = [&hv](const char* value) {
    return hv.ParseParameters(test::Object(
        QByteArray(R"({"parameters": [{"param_name": "n_channels", "param_value": )") + value + "}]}"));
  };
  EXPECT_TRUE(set("1"));
  EXPECT_EQ(All(), one);
  EXPECT_FALSE(set("1025"));
  EXPECT_EQ(All(), one);
  EXPECT_TRUE(hv.ParseParameters(QJsonValue()));
  EXPECT_EQ(All(), one);
}

}  // namespace
