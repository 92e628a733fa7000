#include "client/ScopeQueries.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ScopeQueries, areWrittenAsTheOscilloscopeReadsThem) {
  EXPECT_EQ(EnableQuery(std::vector{0}), R"({"ch_enable":[1],"cmd":"set_channel"})");
  EXPECT_EQ(EnableQuery(std::vector{1, 2, 5}), R"({"ch_enable":[0,1,1,0,0,1],"cmd":"set_channel"})");
  EXPECT_EQ(TracesQuery(), R"({"cmd":"require_data"})");
}

TEST(ReadTraces, readsEveryTrace) {
  const auto traces = ReadTraces(QStringLiteral(R"([{"data":[1,-2.5,1e+06]},{"data":[0,1,0]}])"));
  ASSERT_TRUE(traces.value);
  EXPECT_THAT(*traces.value, ElementsAre(ElementsAre(1, -2.5, 1e6), ElementsAre(0, 1, 0)));
}

TEST(ReadTraces, anOscilloscopeWithoutEnabledChannelsHasNone) {
  const auto traces = ReadTraces(QStringLiteral("[]"));
  ASSERT_TRUE(traces.value);
  EXPECT_THAT(*traces.value, IsEmpty());
}

TEST(ReadTraces, tracesMayHaveNoSamples) {
  const auto traces = ReadTraces(QStringLiteral(R"([{"data":[]},{"data":[]}])"));
  ASSERT_TRUE(traces.value);
  EXPECT_THAT(*traces.value, ElementsAre(IsEmpty(), IsEmpty()));
}

TEST(ReadTraces, saysWhatIsWrong) {
  const std::vector<std::pair<const char*, const char*>> table{
      {"", "it is not JSON"},
      {R"([{"data":[1,2)", "it is not JSON"},
      {R"([{"data":[1]}{"data":[1]}])", "it is not JSON"},  // two analog traces a channel
      {R"([,{"data":[1]}])", "it is not JSON"},             // none
      {R"([{"data":[nan]}])", "it is not JSON"},
      {R"([{"data":[-inf]}])", "it is not JSON"},
      {R"({"data":[1]})", "it is not an array"},
      {R"([{"response": true}])", "its entry 0 has no array \"data\""},
      {R"([[1]])", "its entry 0 has no array \"data\""},
      {R"([{"data":[1]},{}])", "its entry 1 has no array \"data\""},
      {R"([{"data":[1,"2"]}])", "its entry 0 has a sample 1 that is not a value of a converter"},
      {R"([{"data":[true]}])", "its entry 0 has a sample 0 that is not a value of a converter"},
      {R"([{"data":[1e+101]}])", "its entry 0 has a sample 0 that is not a value of a converter"},
      {R"([{"data":[1,2]},{"data":[1]}])", "its entry 1 has 1 samples, not 2"}};
  for (const auto& [answer, fault] : table) {
    const auto traces = ReadTraces(QString(answer));
    EXPECT_FALSE(traces.value) << answer;
    EXPECT_TRUE(traces.fault.startsWith(fault)) << answer << ": " << traces.fault.toStdString();
  }
}

}  // namespace
}  // namespace korvax::client
