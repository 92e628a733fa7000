#include "tests/unit/boards/HvQueriesFixture.h"

namespace {

TEST_F(HvQueries, WithoutABoardEveryReadIsAnsweredByTheError) {
  Make(R"("name": "hv")");
  for (const char* param : {R"(, "param": "all")", R"(, "param": "read_only")", R"(, "param": "x")", ""}) {
    EXPECT_EQ(AnswerTo(QString(R"({"args": [{"cmd": "get_all_ch_values"%1}]})").arg(param)),
              R"({"response":"error", "reason":"Board not connected"})")
        << param;
  }
}

TEST_F(HvQueries, AllTakesEveryParameterInOrder) {
  SetMixedParameters();
  MakeBound("2");
  EXPECT_EQ(All(),
            R"({"response":"ok","List":<\l>,"Word":<\w>,"Words":[<\Channel0\ws>,<\Channel1\ws>],"Flag":<\f>,)"
            R"("Flags":[<\Channel0\fs>,<\Channel1\fs>],)"
            R"("Lists":[<\Channel0\par\Channel0\ls>,<\Channel1\par\Channel1\ls>]})");
}

TEST_F(HvQueries, AllOfABoardWithoutParametersIsOpenedAndClosed) {
  MakeBound();
  EXPECT_EQ(All(), R"({"response":"ok",})");
}

TEST_F(HvQueries, AllEndsInACommaWhenTheLastParameterIsLeftOut_isKept) {
  MakeBound("1");
  for (const char* type : {"string_array", "", "U32", "u64"}) {
    SetParameters({{"a", "\\a", "u32", ""}, {"b", "\\b", "list_array", ""}, {"c", "\\c", type, ""}});
    EXPECT_EQ(All(), R"({"response":"ok","a":<\a>,"b":[<\Channel0\b>],})") << type;
  }
  SetParameters({{"a", "\\a", "string_array", ""}});
  EXPECT_EQ(All(), R"({"response":"ok",})");
  SetParameters({{"a", "\\a", "string_array", ""}, {"b", "\\b", "u32", ""}});
  EXPECT_EQ(All(), R"({"response":"ok","b":<\b>})");
}

TEST_F(HvQueries, ReadOnlyTakesTheReadOnlyScalarsEachInItsObject) {
  SetParameters({{"W", "\\w", "u32", "read_write"},
                 {"A", "\\a", "u32", "read_only"},
                 {"B", "\\b", "list", "read_only"},
                 {"X", "\\x", "boolean", "Read_only"},
                 {"C", "\\c", "boolean", "read_only"}});
  MakeBound();
  EXPECT_EQ(ReadOnly(), R"({"data":[{"A":<\a>},{"B":<\b>},{"C":<\c>}]})");
}

TEST_F(HvQueries, ReadOnlyOfNoneIsAnEmptyList) {
  MakeBound();
  EXPECT_EQ(ReadOnly(), R"({"data":[]})");
  SetParameters({{"W", "\\w", "u32", "read_write"}});
  EXPECT_EQ(ReadOnly(), R"({"data":[]})");
}

TEST_F(HvQueries, ReadOnlyLeavesTheObjectOfAnArrayUnclosed_isKept) {
  MakeBound("3");
  for (const char* type : {"u32_array", "list_array", "bool_array"}) {
    SetParameters({{"V", "\\v", type, "read_only"}, {"A", "\\a", "u32", "read_only"}});
    EXPECT_EQ(ReadOnly(), R"({"data":[{"V":[<\Channel0\v>,<\Channel1\v>,<\Channel2\v>],{"A":<\a>}]})") << type;
  }
}

TEST_F(HvQueries, ReadOnlyCountsWhatItLeavesOut_isKept) {
  SetParameters({{"T", "\\t", "string_array", "read_only"},
                 {"A", "\\a", "u32", "read_only"},
                 {"U", "\\u", "float", "read_only"},
                 {"W", "\\w", "string_array", "read_write"},
                 {"B", "\\b", "u32", "read_only"},
                 {"V", "\\v", "", "read_only"}});
  MakeBound();
  EXPECT_EQ(ReadOnly(), R"({"data":[,{"A":<\a>},,{"B":<\b>},]})");
}

TEST_F(HvQueries, ReadOnlyOfEveryKindOfParameter) {
  SetMixedParameters();
  MakeBound("1");
  EXPECT_EQ(ReadOnly(), R"({"data":[{"List":<\l>},,{"Words":[<\Channel0\ws>],{"Flag":<\f>},)"
                        R"({"Lists":[<\Channel0\par\Channel0\ls>]]})");
}

TEST_F(HvQueries, WithoutChannelsArraysAreEmptyBrackets) {
  SetParameters({{"A", "\\a", "u32_array", "read_only"}, {"B", "\\b", "list_array", "read_only"}});
  MakeBound("0");
  EXPECT_EQ(All(), R"({"response":"ok","A":[],"B":[]})");
  EXPECT_EQ(ReadOnly(), R"({"data":[{"A":[],{"B":[]]})");
}

TEST_F(HvQueries, PathsOfScalarsAndPathsWithoutABackslashStayAsTheyAre) {
  SetParameters({{"A", "\\par\\a", "u32", ""}, {"B", "b", "u32_array", ""}});
  MakeBound("2");
  EXPECT_EQ(All(), R"({"response":"ok","A":<\par\a>,"B":[<b>,<b>]})");
}

TEST_F(HvQueries, NamesAndValuesStandAsTheyAreGiven) {
  plainVendor_ = true;
  vendor_.value = "\"x\" \\ {,\n\xe9";
  SetParameters({{"a \"b\"\\", "\\a", "u32", "read_only"}});
  MakeBound();
  const std::string field = "\"a \"b\"\\\":\"x\" \\ {,\n\xc3\xa9";  // Latin-1 from the board, UTF-8 here
  EXPECT_EQ(All(), R"({"response":"ok",)" + field + "}");
  EXPECT_EQ(ReadOnly(), R"({"data":[{)" + field + "}]}");
}

TEST_F(HvQueries, EachValueIsReadOnceInOrderAtEveryQuery) {
  plainVendor_ = true;
  SetMixedParameters();
  MakeBound("2");
  for (int query = 0; query < 2; ++query) {
    vendor_.ClearCalls();
    ReadOnly();
    EXPECT_EQ(vendor_.Calls(),
              (QStringList{"get \\l", "get \\Channel0\\ws", "get \\Channel1\\ws", "get \\f",
                           "get \\Channel0\\par\\Channel0\\ls", "get \\Channel1\\par\\Channel1\\ls"}));
  }
}

TEST_F(HvQueries, AFailingReadShowsWhatTheLibraryLeftInTheText) {
  plainVendor_ = true;
  vendor_.result = -6;
  SetParameters({{"A", "\\a", "u32", "read_only"}, {"B", "\\b", "u32_array", "read_only"}});
  MakeBound("2");
  EXPECT_EQ(All(), R"({"response":"ok","A":,"B":[,]})");
  EXPECT_EQ(ReadOnly(), R"({"data":[{"A":},{"B":[,]]})");
  vendor_.value = "?";
  EXPECT_EQ(All(), R"({"response":"ok","A":?,"B":[?,?]})");
}

TEST_F(HvQueries, WithoutAReadFunctionValuesAreEmpty) {
  plainVendor_ = true;
  vendor_.value = "1";
  vendor_.missing = {"CAENDig2_GetValueByQuery"};
  SetParameters({{"A", "\\a", "u32", "read_only"}, {"B", "\\b", "u32_array", "read_only"}});
  MakeBound("3");
  EXPECT_EQ(All(), R"({"response":"ok","A":,"B":[,,]})");
  EXPECT_EQ(ReadOnly(), R"({"data":[{"A":},{"B":[,,]]})");
}

TEST_F(HvQueries, AnswersFollowTheParameterTreeWhenItIsReplaced) {
  MakeBound();
  SetParameters({{"A", "\\a", "u32", ""}});
  EXPECT_EQ(All(), R"({"response":"ok","A":<\a>})");
  SetParameters({{"B", "\\b", "u32", ""}});
  EXPECT_EQ(All(), R"({"response":"ok","B":<\b>})");
}

TEST_F(HvQueries, AnswersAreAppendedToWhatIsThere) {
  MakeBound();
  QString query = R"({"args": [{"cmd": "get_all_ch_values", "param": "all"}]})";
  QString answer = "before ";
  block_->InterpretMessage(&query, &answer);
  EXPECT_EQ(answer, QString(R"(before {"response":"ok",})"));
}

TEST_F(HvQueries, TheLastOfSeveralCommandsAndParamsCounts) {
  SetParameters({{"A", "\\a", "u32", ""}});
  MakeBound();
  const std::string all = R"({"response":"ok","A":<\a>})";
  const std::string readOnly = R"({"data":[]})";
  const std::pair<const char*, std::string> rows[] = {
      {R"({"cmd": "get_all_ch_values", "param": "read_only"}, {"param": "all"})", all},
      {R"({"cmd": "get_all_ch_values", "param": "all"}, {"param": "read_only"})", readOnly},
      {R"({"cmd": "hv_global_on", "param": "all"}, {"cmd": "get_all_ch_values"})", all},
      {R"({"param": "all"}, {"cmd": "get_all_ch_values"}, {"other": 1})", all},
      {R"({"cmd": "get_all_ch_values"}, 5, null, "x", [], {"param": "all"})", all},
      {R"({"cmd": "get_all_ch_values", "param": "all"}, {"param": 5})", ""},
      {R"({"cmd": "get_all_ch_values", "param": "all"}, {"param": null})", ""},
      {R"({"cmd": "get_all_ch_values", "param": "all"}, {"cmd": ["hv_global_on"]})", ""},
      {R"({"cmd": "get_all_ch_values", "param": "all"}, {"cmd": ""})", ""},
  };
  for (const auto& [args, answer] : rows) {
    EXPECT_EQ(AnswerTo(QString(R"({"args": [%1]})").arg(args)), answer) << args;
  }
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

TEST_F(HvQueries, AnythingElseIsAnsweredByNothingAndReachesNoBoard) {
  plainVendor_ = true;
  SetParameters({{"A", "\\a", "u32", "read_only"}});
  LoadCommands();
  MakeBound();
  const char* messages[] = {"",
                            "not json",
                            "{",
                            "[]",
                            "5",
                            "{}",
                            R"({"args": 5})",
                            R"({"args": "hv_global_on"})",
                            R"({"args": []})",
                            R"({"args": {"cmd": "hv_global_on"}})",
                            R"({"args": ["hv_global_on", 1, null, []]})",
                            R"({"cmd": "hv_global_on"})",
                            R"([{"cmd": "hv_global_on"}])",
                            R"({"args": [{"cmd": 5}]})",
                            R"({"args": [{"cmd": "HV_global_on"}]})",
                            R"({"args": [{"cmd": "hv_global_on "}]})",
                            R"({"args": [{"cmd": "hv_on"}]})",
                            R"({"args": [{"Cmd": "hv_global_on"}]})",
                            R"({"args": [{"cmd": "get_data"}]})",
                            R"({"args": [{"cmd": "get_all_ch_values"}]})",
                            R"({"args": [{"cmd": "get_all_ch_values", "param": "All"}]})",
                            R"({"args": [{"cmd": "get_all_ch_values", "param": "read_write"}]})",
                            R"({"args": [{"cmd": "get_all_ch_values", "Param": "all"}]})",
                            R"({"args": [{"param": "all"}]})"};
  for (const char* message : messages) {
    EXPECT_EQ(AnswerTo(message), "") << message;
  }
  EXPECT_TRUE(vendor_.Calls().isEmpty());
}

}  // namespace
