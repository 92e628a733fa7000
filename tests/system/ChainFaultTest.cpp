#include "tests/system/SystemTest.h"

namespace test {

namespace {

struct ChainFault {
  const char* name;
  const char* path;  // below the chain's blocks
  QJsonValue value;
  const char* line;  // the last one begins so
};

void PrintTo(const ChainFault& value, std::ostream* out) {
  *out << value.name;
}

class ChainFaultTest : public SystemTest, public testing::WithParamInterface<ChainFault> {};

TEST_P(ChainFaultTest, EndsTheServerInOneLine) {
  StartAndWaitUntilReady();
  const auto linesBefore = server.ErrorLines().size() - 1;  // without the line that it is ready
  EndServer();

  const ScriptedFeed second(installation.StoragePath());
  Change(QStringLiteral("Hardware/0/board_connection_string"), second.Connection());
  Change(QStringLiteral("processing/0/filter_chain/0/chain/") + QLatin1String(GetParam().path), GetParam().value);
  Start();
  EXPECT_EQ(server.WaitForExit(), 1);
  const QStringList lines = server.ErrorLines();
  EXPECT_EQ(lines.size(), linesBefore + 1);
  EXPECT_TRUE(lines.last().startsWith(QLatin1String(GetParam().line))) << lines.last().toStdString();
  EXPECT_TRUE(lines.last().contains(QStringLiteral(": expected "))) << lines.last().toStdString();
  EXPECT_EQ(second.CallsOf(QStringLiteral("command")), QStringList()) << "a board was armed";
}

QJsonValue Block(const char* name, const char* type, const QJsonArray& sources, int inputs) {
  return QJsonObject{{QStringLiteral("name"), QLatin1String(name)},
                     {QStringLiteral("block_type"), QLatin1String(type)},
                     {QStringLiteral("input_count"), inputs},
                     {QStringLiteral("sources"), sources}};
}

QJsonValue Link(const char* source, const QJsonValue& pin) {
  return QJsonObject{{QStringLiteral("source"), QLatin1String(source)}, {QStringLiteral("pin"), pin}};
}

std::vector<ChainFault> Faults() {
  const char* const spectrumSource =
      R"(Processing group 0, chain "main", block "spectrum", key "sources"[0]."source": expected )";
  const char* const spectrumPin =
      R"(Processing group 0, chain "main", block "spectrum", key "sources"[0]."pin": expected )";
  const char* const spectrumInputs =
      R"(Processing group 0, chain "main", block "spectrum", key "input_count": expected at most 1)";
  return {
      {"UnknownType", "1/block_type", "histogramm",
       R"(Processing group 0, chain "main", block "spectrum", key "block_type": expected )"},
      {"TypeInAnotherLetterCase", "1/block_type", "Spectrum",
       R"(Processing group 0, chain "main", block "spectrum", key "block_type": expected )"},
      {"MissingType", "0/block_type", QJsonValue(QJsonValue::Undefined),
       R"(Processing group 0, chain "main", block "source", key "block_type": expected )"},
      {"UnknownSource", "1/sources/0/source", "nobody", spectrumSource},
      {"SourceInAnotherLetterCase", "1/sources/0/source", "Source", spectrumSource},
      {"SourceIsTheBlockItself", "1/sources/0/source", "spectrum", spectrumSource},
      {"SourceStandsLater", "0", Block("early", "spectrum", {Link("spectrum", "0")}, 1),
       R"(Processing group 0, chain "main", block "early", key "sources"[0]."source": expected )"},
      {"PinTooHigh", "1/sources/0/pin", "1", spectrumPin},
      {"PinNegative", "1/sources/0/pin", "-1", spectrumPin},
      {"UpstreamWithoutOutputs", "2", Block("second", "spectrum", {Link("spectrum", "0")}, 1),
       R"(Processing group 0, chain "main", block "second", key "sources"[0]."pin": expected )"},
      {"MoreInputsThanSources", "1/input_count", 2, spectrumInputs},
      {"MoreInputsThanPins", "1", Block("spectrum", "spectrum", {Link("source", "0"), Link("source", "0")}, 2),
       spectrumInputs},
      {"AFarTooLargeSpectrum", "1/parameters/0/param_value", 2147483647,
       R"(Processing group 0, chain "main", block "spectrum", "ch_number" times "bin_number": expected at most )"},
  };
}

std::string NameOf(const testing::TestParamInfo<ChainFault>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(EveryFault, ChainFaultTest, testing::ValuesIn(Faults()), NameOf);

}  // namespace

}  // namespace test
