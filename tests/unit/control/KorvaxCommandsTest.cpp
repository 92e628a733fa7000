#include "tests/unit/control/RunFixture.h"

namespace {

class KorvaxCommands : public RunFixture {};

constexpr const char* UnknownEndpoint = R"([{"response": "Unknown endpoint"}])";

TEST_F(KorvaxCommands, HaveTheirTypeWordNoPinsAndNoPartInRuns) {
  EXPECT_EQ(Commands().BlockType(), QString("commands"));
  EXPECT_FALSE(Commands().IsDumpCapable());
  EXPECT_TRUE(Commands().Inputs().empty());
  EXPECT_TRUE(Commands().Outputs().empty());
}

TEST_F(KorvaxCommands, AnUnknownOrMissingCommandIsAnsweredWithNothing) {
  for (const char* message : {R"({"cmd": "START"})", R"({"cmd": ""})", R"({})", R"({"cmd": 1})",
                              R"([{"cmd": "reset"}])", "no JSON", "", R"({"args": [{"cmd": "reset"}]})"}) {
    EXPECT_EQ(Tell(message), "") << message;
  }
  EXPECT_TRUE(vendor.Calls().isEmpty());
}

TEST_F(KorvaxCommands, StopSendsTheStopCommandsOfTheNamedSourceAlone) {
  EXPECT_EQ(Tell(R"({"cmd": "stop", "endpoint": "s2"})"), Success);
  EXPECT_EQ(vendor.Calls(), QStringList{"command stop2"});
}

TEST_F(KorvaxCommands, StartRunsTheAcquisitionThreadOfTheNamedSourceAlone) {
  EXPECT_EQ(Tell(R"({"cmd": "start", "endpoint": "s2"})"), Success);
  EXPECT_TRUE(test::WaitFor([this] { return !vendor.CallsOf("read").isEmpty(); }));
  EXPECT_TRUE(vendor.CallsOf("read endpoints\\one").isEmpty());
  EXPECT_EQ(Tell(R"({"cmd": "start", "endpoint": "s2"})"), Success) << "a thread that runs goes on";
}

TEST_F(KorvaxCommands, StartAndStopOfWhatIsNoSourceAreRefusedAndTouchNothing) {
  Add<AnsweringBlock>("spectrum", "spectrum", "p");
  const char* const messages[] = {
      R"({"cmd": "start", "endpoint": "nobody"})",
      R"({"cmd": "stop", "endpoint": "nobody"})",
      R"({"cmd": "start", "endpoint": "spectrum"})",
      R"({"cmd": "stop", "endpoint": "spectrum"})",
      R"({"cmd": "start", "endpoint": "commands"})",
      R"({"cmd": "stop", "endpoint": "S1"})",
      R"({"cmd": "start"})",
      R"({"cmd": "stop", "endpoint": 1})",
  };
  for (const char* message : messages) {
    EXPECT_EQ(Tell(message), UnknownEndpoint) << message;
  }
  EXPECT_TRUE(vendor.Calls().isEmpty());
}

TEST_F(KorvaxCommands, TheFirstBlockOfTheNameDecidesWhetherItIsASource) {
  blocks.clear();
  Add<AnsweringBlock>("spectrum", "s1", "p");
  AddSource("s1", "one");
  EXPECT_EQ(Tell(R"({"cmd": "stop", "endpoint": "s1"})"), UnknownEndpoint);
  EXPECT_TRUE(vendor.Calls().isEmpty());
}

TEST_F(KorvaxCommands, ASourceWhoseBindingFailedIsNeverRun) {
  AddSource("unbound", "nowhere");
  EXPECT_EQ(Tell(R"({"cmd": "start", "endpoint": "unbound"})"), Success);
  EXPECT_EQ(Tell(R"({"cmd": "stop", "endpoint": "unbound"})"), Success);
  EXPECT_EQ(Tell(R"({"cmd": "reset"})"), Success);
  EXPECT_TRUE(vendor.CallsOf("read").isEmpty());
  EXPECT_EQ(vendor.CallsOf("command").size(), 6) << "of the two others";
}

TEST_F(KorvaxCommands, ResetStopsFlushesAndStartsEverySourceInListOrder) {
  EXPECT_EQ(Tell(R"({"cmd": "reset"})"), Success);
  EXPECT_EQ(vendor.Calls(), RestartCalls);
}

TEST_F(KorvaxCommands, HighVoltageIsSwitchedInEveryBlockOfThatTypeWhateverTheyAnswer) {
  const AnsweringBlock& first = Add<AnsweringBlock>("hv", "hv1", "Hardware/a");
  const AnsweringBlock& spectrum = Add<AnsweringBlock>("spectrum", "spectrum", "p");
  const AnsweringBlock& second = Add<AnsweringBlock>("hv", "hv2", "Hardware/b");
  Add<SilentBlock>("hv", "silent", "Hardware/c");
  EXPECT_EQ(Tell(R"({"cmd": "hv_on"})"), Success);
  EXPECT_EQ(Tell(R"({"cmd": "hv_off"})"), Success);
  const QStringList sent = {R"({"args":[{"cmd":"hv_global_on"}]})", R"({"args":[{"cmd":"hv_global_off"}]})"};
  EXPECT_EQ(first.queries, sent);
  EXPECT_EQ(second.queries, sent);
  EXPECT_TRUE(spectrum.queries.isEmpty());
}

TEST_F(KorvaxCommands, HighVoltageWithoutSuchABlockSucceeds) {
  EXPECT_EQ(Tell(R"({"cmd": "hv_on"})"), Success);
  EXPECT_EQ(Tell(R"({"cmd": "hv_off"})"), Success);
}

TEST_F(KorvaxCommands, RunInformationWithoutADumperIsAnEmptyArray) {
  EXPECT_EQ(Tell(R"({"cmd": "get_run_info"})"), "[]");
}

}  // namespace
