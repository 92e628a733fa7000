#include "configuration/ConfigurationSchema.h"
#include "tests/support/Json.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

using korvax::JsonSchema;

/// A value that is of the right type but not what the server can work with.
struct Row {
  const char* block;  // of which a parameter is meant; "" for a path from the top
  const char* key;
  QJsonValue value;
  const char* severity;
  const char* finding;  // after the place
};

QJsonArray Repeated(const QJsonValue& value, int times) {
  QJsonArray array;
  for (int i = 0; i < times; ++i) {
    array.append(value);
  }
  return array;
}

const std::vector<Row> Rows{
    {"", "storage/file_path", "", "error", "expected the path of a folder; found \"\""},
    {"", "storage/format", "bin", "error",
     "expected one of \"BIN\", \"CSV\", \"JSON\"; found \"bin\" (did you mean \"BIN\"?)"},
    {"", "storage/events_per_file", -1, "error", "expected an integer from 0 to 2147483647; found -1"},
    {"", "storage/events_per_file", 2147483648.0, "error",
     "expected an integer from 0 to 2147483647; found 2147483648"},
    {"", "storage/events_per_file", 0, "warning",
     "expected an integer from 1 to 2147483647, as events are recorded; found 0"},
    {"", "storage/wavedump_time_interval", -5, "warning", "expected an integer from 0 to 2147483647; found -5"},
    {"", "network/address", "", "error", "expected an IP address, such as \"127.0.0.1\"; found \"\""},
    {"", "network/origins/0", "lab.example", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"lab.example\""},
    {"", "network/origins/0", "", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"\""},
    {"", "network/origins/0", "*", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"*\""},
    {"", "network/origins/0", "https://lab.example/", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"https://lab.example/\""},
    {"", "network/origins/0", "https://lab.example\n", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"https://lab.example\\n\""},
    {"", "network/origins/0", "https://u@lab.example", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"https://u@lab.example\""},
    {"", "network/origins/0", "https://lab.example:", "error",
     "expected an origin, such as \"http://lab.example:8080\", or \"null\"; found \"https://lab.example:\""},
    {"", "network/max_connections", 0, "error", "expected an integer from 1 to 65536; found 0"},
    {"", "network/max_connections", -1, "error", "expected an integer from 1 to 65536; found -1"},
    {"", "network/max_connections", 65537, "error", "expected an integer from 1 to 65536; found 65537"},
    {"", "network/max_message_bytes", 1023, "error", "expected an integer from 1024 to 2147483647; found 1023"},
    {"", "network/max_message_bytes", 2147483648.0, "error",
     "expected an integer from 1024 to 2147483647; found 2147483648"},
    {"", "network/max_unsent_bytes", 0, "error", "expected an integer from 1024 to 2147483647; found 0"},
    {"", "network/max_unsent_bytes", 1e15, "error",
     "expected an integer from 1024 to 2147483647; found 1000000000000000"},
    {"", "Hardware", QJsonArray(), "error",
     "expected an array of objects with at least 1 entry; found an empty array"},
    {"", "Hardware/0/id", 3000000000.0, "error",
     "expected a text or an integer from -2147483648 to 2147483647; found 3000000000"},
    {"", "Hardware/0/board_plugin", "", "error",
     "expected the base name of a library, without suffix; found \"\""},
    {"", "Hardware/0/board_plugin", "libCAENDig2Sim.so", "error",
     "expected the base name of a library, without suffix; found \"libCAENDig2Sim.so\""},
    {"", "Hardware/0/board_plugin", "boards/libCAENDig2Sim", "error",
     "expected the base name of a library, without suffix; found \"boards/libCAENDig2Sim\""},
    {"", "Hardware/0/board_plugin", "Sim", "error",
     "expected the base name of a library, without suffix; found \"Sim\""},
    {"", "Hardware/0/board_plugin", "libCAENDig2Sim\n.", "error",
     "expected the base name of a library, without suffix; found \"libCAENDig2Sim\\n.\""},
    {"", "Hardware/0/configs/0/elements/0/value_type", "u64", "warning",
     "expected one of \"list\", \"u32\", \"boolean\", \"bool_array\", \"list_array\", \"u32_array\", "
     "\"string_array\"; "
     "found \"u64\""},
    {"", "Hardware/0/configs/0/elements/1/values", Repeated("1", 65), "error",
     "expected an array of at most 64 texts \"0\" and \"1\"; found an array"},
    {"", "Hardware/0/configs/0/elements/1/values", QJsonArray(), "warning",
     "expected an array with at least one value; found an empty array"},
    {"", "Hardware/0/configs/0/elements/2/values", QJsonArray(), "warning",
     "expected an array with at least one value; found an empty array"},
    {"", "Hardware/0/configs/0/elements/1/values/1", "2", "error", "expected one of \"0\", \"1\"; found \"2\""},
    {"", "Hardware/0/configs/0/elements/1/values/1", true, "error", "expected one of \"0\", \"1\"; found true"},
    {"", "Hardware/0/commands/0/command_type", "begin", "warning",
     "expected one of \"config\", \"config_all\", \"start\", \"stop\", \"reset\"; found \"begin\""},
    {"", "Hardware/0/commands/0/display_ui", "True", "warning",
     "expected one of \"true\", \"false\"; found \"True\" (did you mean \"true\"?)"},
    {"", "Hardware/0/commands/0/loop", "yes", "warning", "expected one of \"true\", \"false\"; found \"yes\""},
    {"", "Hardware/0/commands/0/loop", true, "warning", "expected one of \"true\", \"false\"; found true"},
    {"", "Hardware/0/commands/0/display_ui", false, "warning", "expected one of \"true\", \"false\"; found false"},
    {"", "processing/0/filter_chain/0/chain/0/data_type", "enrgy", "warning",
     "expected one of \"energy\", \"energy_pair\", \"waveform\", \"rate_counters\"; found \"enrgy\" (did you "
     "mean "
     "\"energy\"?)"},
    {"", "processing/0/filter_chain/0/chain/0/sources/0/pin", "endpoint\\energy", "error",
     "expected \"endpoints\\\\\" and the name of an endpoint; found \"endpoint\\\\energy\""},
    {"", "processing/0/filter_chain/0/chain/0/sources/0/pin", "endpoints\\a\\b", "error",
     "expected \"endpoints\\\\\" and the name of an endpoint; found \"endpoints\\\\a\\\\b\""},
    {"", "processing/0/filter_chain/0/chain/1/output_count", 0, "warning",
     "expected an integer from 1 to 1024; found 0"},
    {"", "processing/0/filter_chain/0/chain/1/output_count", 1025, "error",
     "expected an integer from 1 to 1024; found 1025"},
    {"", "processing/0/filter_chain/0/chain/2/input_count", -1, "error",
     "expected an integer from 0 to 2147483647; found -1"},
    {"", "processing/0/filter_chain/0/chain/2/sources/0/pin", "one", "warning",
     "expected the index of an output pin as a text, such as \"0\"; found \"one\""},
    {"", "processing/0/filter_chain/0/chain/2/sources/0/pin", "-1", "warning",
     "expected the index of an output pin as a text, such as \"0\"; found \"-1\""},
    {"", "processing/0/filter_chain/0/chain/2/sources/0/pin", "4294967296", "warning",
     "expected the index of an output pin as a text, such as \"0\"; found \"4294967296\""},
    {"", "processing/0/filter_chain/0/chain/2/sources/0/pin", "99999999999", "warning",
     "expected the index of an output pin as a text, such as \"0\"; found \"99999999999\""},
    {"", "processing/0/filter_chain/0/chain/2/sources/0/pin", "0\n", "warning",
     "expected the index of an output pin as a text, such as \"0\"; found \"0\\n\""},
    {"", "processing/0/filter_chain/0/chain/5/parameters", QJsonArray{QJsonObject()}, "warning",
     "expected no parameters: the block has none; found an array"},
    {"source", "download_interval", -0.5, "error", "expected a number of at least 0; found -0.5"},
    {"source", "energy_calibration_expression", QString(16385, 'x'), "error",
     "expected a text of at most 16384 characters; found "
     "\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\xE2\x80\xA6\""},
    {"spectrum", "ch_number", 0, "warning", "expected an integer from 1 to 67108864; found 0"},
    {"spectrum", "ch_number", -1, "error", "expected an integer from 1 to 67108864; found -1"},
    {"spectrum", "bin_number", 0, "warning", "expected an integer from 1 to 67108864; found 0"},
    {"spectrum", "bin_number", 67108865, "error", "expected an integer from 1 to 67108864; found 67108865"},
    {"tof_histogram", "bin_number", -2, "error", "expected an integer from 1 to 67108864; found -2"},
    {"tof_histogram", "ch_number", 0, "warning", "expected an integer from 1 to 67108864; found 0"},
    {"tof_histogram", "bin_number", 0, "warning", "expected an integer from 1 to 67108864; found 0"},
    {"tof_histogram", "binning", 0, "warning", "expected a number greater than 0; found 0"},
    {"tof_histogram", "binning", -1, "error", "expected a number greater than 0; found -1"},
    {"image", "x_positions", QJsonArray(), "warning",
     "expected an array of integers with at least 1 entry; found an empty array"},
    {"image", "y_positions", QJsonArray(), "warning",
     "expected an array of integers with at least 1 entry; found an empty array"},
    {"position", "positions", QJsonArray{0}, "warning",
     "expected an array of integers with at least 2 entries; found an array"},
    {"position", "positions", QJsonArray(), "warning",
     "expected an array of integers with at least 2 entries; found an empty array"},
    {"position", "correlated_channels", QJsonArray(), "warning",
     "expected an array of integers with at least 1 entry; found an empty array"},
    {"position", "y_positions", 0, "warning", "expected an integer from 1 to 67108864; found 0"},
    {"position", "y_positions", -1, "error", "expected an integer from 1 to 67108864; found -1"},
    {"oscilloscope", "sample_number", 16777217, "error", "expected an integer from 1 to 16777216; found 16777217"},
    {"oscilloscope", "sample_number", 0, "warning", "expected an integer from 1 to 16777216; found 0"},
    {"oscilloscope", "ch_number", 0, "warning", "expected an integer from 1 to 1048576; found 0"},
    {"oscilloscope", "ch_number", 1048577, "error", "expected an integer from 1 to 1048576; found 1048577"},
    {"oscilloscope", "ch_analog", 2, "warning", "expected 1; found 2"},
    {"oscilloscope", "ch_digital", -1, "error", "expected an integer from 0 to 1048576; found -1"},
    {"rate_counters_sink", "history_depth", 100001, "error", "expected an integer from 0 to 100000; found 100001"},
    {"hv", "n_channels", 1025, "error", "expected an integer from 0 to 1024; found 1025"},
    {"hv", "n_channels", -1, "warning", "expected an integer from 0 to 1024; found -1"},
};

// The value of a parameter, in the first block of its type that has it.
QStringList PathOf(const QJsonObject& whole, const Row& row) {
  if (*row.block == '\0') {
    return QString(QLatin1String(row.key)).split('/');
  }
  for (const QStringList& path : test::AllPaths(whole)) {
    if (path.last() == "param_name" && test::At(whole, path) == row.key &&
        test::At(whole, path.mid(0, 6))["block_type"] == row.block) {
      return path.mid(0, path.size() - 1) + QStringList{"param_value"};
    }
  }
  ADD_FAILURE() << row.block << ' ' << row.key;
  return {};
}

TEST(Ranges, whatLiesOutsideIsRefusedByTheSchemaAndNamedByTheCheck) {
  const JsonSchema schema(test::Object(korvax::ConfigurationSchemaText()));
  const QJsonObject good = test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
  for (const Row& row : Rows) {
    const QStringList path = PathOf(good, row);
    const QJsonObject edited = test::With(good, path, row.value);
    EXPECT_FALSE(schema.Accepts(edited)) << row.key;
    const QStringList findings = test::SchemaFindingsIn(test::Text(edited));
    ASSERT_EQ(findings.size(), 1) << row.key << '\n' << test::Joined(findings);
    const QString begin =
        QStringLiteral("%1: %2: ").arg(test::LineOf(good, path)).arg(QLatin1String(row.severity));
    EXPECT_TRUE(findings[0].startsWith(begin)) << test::Joined(findings);
    EXPECT_EQ(findings[0].mid(findings[0].indexOf(": expected ") + 2).toStdString(), row.finding) << row.key;
    EXPECT_TRUE(test::FindingsIn(test::Text(edited)).contains(findings[0])) << row.key;
  }
}

TEST(Ranges, theirEndsAreRight) {
  const QJsonObject good = test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
  const std::vector<Row> rows{
      {"", "storage/events_per_file", 2147483647, "", ""},
      {"", "storage/wavedump_time_interval", 0, "", ""},
      {"", "network/address", "::", "", ""},
      {"", "network/origins", QJsonArray(), "", ""},
      {"", "network/origins/0", "HTTPS://Lab-1.example", "", ""},
      {"", "network/origins/0", "http://127.0.0.1:80", "", ""},
      {"", "network/origins/0", "http://[::1]:8080", "", ""},
      {"", "network/max_connections", 1, "", ""},
      {"", "network/max_connections", 65536, "", ""},
      {"", "network/max_message_bytes", 1024, "", ""},
      {"", "network/max_message_bytes", 2147483647, "", ""},
      {"", "network/max_unsent_bytes", 1024, "", ""},
      {"", "network/max_unsent_bytes", 2147483647, "", ""},
      {"", "Hardware/0/id", 2147483647, "", ""},
      {"", "Hardware/0/board_plugin", "CAENDig2", "", ""},
      {"", "Hardware/0/board_plugin", "LIBcaenDIG2 simulated-0_1", "", ""},
      {"", "Hardware/1/board_plugin", "", "", ""},
      {"", "processing/0/filter_chain/0/chain/2/sources/0/pin", "999999999", "", ""},
      {"", "processing/0/filter_chain/0/chain/1/output_count", 1024, "", ""},
      {"", "Hardware/0/configs/0/elements/1/values", Repeated("1", 64), "", ""},
      {"source", "download_interval", 0, "", ""},
      {"source", "energy_calibration_expression", QString(16384, 'x'), "", ""},
      {"spectrum", "ch_number", 67108864, "", ""},
      {"spectrum", "bin_number", 1, "", ""},
      {"spectrum", "bin_number", 2.0, "", ""},
      {"tof_histogram", "binning", 1e-9, "", ""},
      {"oscilloscope", "ch_digital", 0, "", ""},
      {"rate_counters_sink", "history_depth", 0, "", ""},
      {"rate_counters_sink", "history_depth", 100000, "", ""},
      {"hv", "n_channels", 0, "", ""},
      {"hv", "n_channels", 1024, "", ""},
  };
  for (const Row& row : rows) {
    const QJsonObject edited = test::With(good, PathOf(good, row), row.value);
    EXPECT_EQ(test::Joined(test::SchemaFindingsIn(test::Text(edited))), "") << row.key;
  }
}

}  // namespace
