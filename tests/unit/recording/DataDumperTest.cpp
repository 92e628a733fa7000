#include "tests/unit/recording/DumperFixture.h"

#include <QMetaMethod>

namespace {

class ADumper : public test::DumperFixture {};

TEST_F(ADumper, isARecordingBlockWithOneInput) {
  EXPECT_EQ(block.BlockType(), "dumper");
  EXPECT_TRUE(block.IsDumpCapable());
  EXPECT_EQ(block.Name(), "dumper");
  EXPECT_EQ(block.property("Name").toString(), "dumper");
  EXPECT_EQ(block.property("FullPath").toString(), "processing/0/filter_chain/main/chain/dumper");
  ASSERT_EQ(block.Inputs().size(), 1U);
  EXPECT_EQ(block.Inputs().front()->Name(), "energy");
  EXPECT_TRUE(block.Outputs().empty());
  EXPECT_EQ(block.Fault(), "");
}

TEST_F(ADumper, hasItsSlotsInOrder) {
  const QMetaObject& meta = DataDumper::staticMetaObject;
  const std::pair<const char*, QList<QByteArray>> rows[] = {
      {"NewDataInTheInputPin(int)", {"FifoLevel"}},
      {"FifoLevel()", {}},
      {"InterpretMessage(QString*,QString*)", {"data_in", "data_out"}},
      {"ConfigureDump(int,QString,QString)", {"dump_events", "file_type", "file_path"}},
      {"StartDump(QString)", {"run_id"}},
      {"StopDump()", {}},
      {"PauseDump()", {}},
      {"GetRunInfo(QString*)", {"out"}},
      {"ReStartDump()", {}},
  };
  int index = meta.methodOffset();
  for (const auto& [signature, names] : rows) {
    const QMetaMethod method = meta.method(index++);
    EXPECT_EQ(method.methodSignature(), signature);
    EXPECT_EQ(method.methodType(), QMetaMethod::Slot) << signature;
    if (signature != std::string("GetRunInfo(QString*)")) {
      EXPECT_EQ(method.parameterNames(), names) << signature;
    }
  }
  EXPECT_EQ(meta.methodCount(), index);
}

TEST_F(ADumper, reportsARunOfIdZeroBeforeTheFirst) {
  EXPECT_EQ(Info(),
            "{\"status\":0,\"name\": \"dumper\",\"event_rate\":0,\"id\":0,\"stored_events\":0,\"running_time\":0,"
            "\"used_space\":0}");
  EXPECT_EQ(Ask(R"({"cmd":"get_dump_counts"})"),
            "[{\"response\": true,\"status\":0,\"recorded\":0,\"discarded\":0,\"failed\":0,\"dropped\":0,"
            "\"overwritten\":0,\"run_start\":0,\"paused_running_time\":0}]");
}

TEST_F(ADumper, appendsItsRunInformation) {
  QString out = "before ";
  block.GetRunInfo(&out);
  EXPECT_TRUE(out.startsWith("before {\"status\":0,")) << qPrintable(out);
}

TEST_F(ADumper, insertsTheRunIdWithoutQuotes_isKept) {
  block.StartDump("night run/3");
  EXPECT_EQ(Info(),
            "{\"status\":1,\"name\": \"dumper\",\"event_rate\":0,\"id\":night run/3,\"stored_events\":0,"
            "\"running_time\":0,\"used_space\":0}");
  block.StartDump("");
  EXPECT_TRUE(Info().contains(",\"id\":,\"stored_events\"")) << qPrintable(Info());
}

TEST_F(ADumper, goesThroughTheStatesOfARun) {
  const auto status = [this] { return Info().mid(10, 1).toInt(); };
  EXPECT_EQ(status(), 0);
  Start("7");
  EXPECT_EQ(status(), 1);
  block.PauseDump();
  EXPECT_EQ(status(), 2);
  block.ReStartDump();
  EXPECT_EQ(status(), 1);
  block.StopDump();
  EXPECT_EQ(status(), 0);
  block.ReStartDump();
  EXPECT_EQ(status(), 1);
  EXPECT_EQ(Ask(R"({"cmd":"pause_dump"})"), "[{\"response\": true}]");
  EXPECT_EQ(status(), 2);
  EXPECT_EQ(Ask(R"({"cmd":"stop_dump"})"), "[{\"response\": true}]");
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(Ask(R"({"cmd":"start_dump"})"), "[{\"response\": true}]");
  EXPECT_EQ(status(), 1);
}

TEST_F(ADumper, answersNothingToWhatItDoesNotKnow) {
  for (const char* const message : {"", "no JSON", "[]", "{}", R"({"cmd":"unknown"})", R"({"cmd":7})",
                                    R"({"args":[{"cmd":"stop_dump"}]})", R"([{"cmd":"stop_dump"}])"}) {
    EXPECT_EQ(Ask(message), "") << message;
  }
  QString query = R"({"cmd":"unknown"})";
  QString answer = "kept";
  block.InterpretMessage(&query, &answer);
  EXPECT_EQ(answer, "kept");
}

TEST_F(ADumper, showsWhatWaitsInItsPin) {
  EXPECT_EQ(block.FifoLevel(), 0);
  block.StopWorker();
  ASSERT_TRUE(feed.Push({}));
  ASSERT_TRUE(feed.Push({}));
  EXPECT_EQ(block.FifoLevel(), 2);
}

TEST(ADumperWithoutALink, startsStopsAndAnswers) {
  DataDumper block(nullptr, test::DumperContext(), test::Object(R"({"name":"alone"})"));
  block.StartDump("7");
  block.NewDataInTheInputPin(1);
  EXPECT_EQ(block.FifoLevel(), 0);
  QString info;
  block.GetRunInfo(&info);
  EXPECT_TRUE(info.startsWith("{\"status\":1,\"name\": \"alone\",")) << qPrintable(info);
}

}  // namespace
